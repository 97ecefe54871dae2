#pragma once

#include <QUtf8StringView>

#include <vector>

struct sqlite3;

namespace talnik {

/// A pattern of the system's LIKE: "*" stands for any run of characters, "?" for one, "#" for one digit; upper and
/// lower case are the same in every script.
class LikePattern {
 public:
  explicit LikePattern(QUtf8StringView pattern);
  bool Matches(QUtf8StringView text) const;

 private:
  std::vector<char32_t> tokens_;
  qsizetype shortest_ = 0;  ///< bytes of the shortest text that can match
};

/// Gives the connection the function talnik_like(pattern, text); an SQLite result code.
int RegisterLike(sqlite3* db);

}  // namespace talnik
