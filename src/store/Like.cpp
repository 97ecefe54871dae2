#include "store/Like.h"

#include <QChar>

#include <sqlite3.h>

#include <array>
#include <memory>

namespace talnik {

namespace {

// Wildcards as values that no character has.
constexpr char32_t kAnyRun = 0x110000;
constexpr char32_t kAnyOne = 0x110001;
constexpr char32_t kAnyDigit = 0x110002;

using Byte = unsigned char;

char32_t DecodeLong(const Byte*& at, const Byte* end) {
  const Byte first = *at++;
  const int more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
  if (more == 0 || end - at < more) return QChar::ReplacementCharacter;
  char32_t character = first & (0x3FU >> more);
  for (int i = 0; i < more; ++i) {
    if ((at[i] & 0xC0U) != 0x80U) return QChar::ReplacementCharacter;
    character = character << 6U | (at[i] & 0x3FU);
  }
  at += more;
  return QChar::toCaseFolded(character);
}

constexpr std::array<Byte, 128> kFolded = [] {
  std::array<Byte, 128> folded{};
  for (Byte byte = 0; byte < 128; ++byte) folded[byte] = byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
  return folded;
}();

/// The next character, folded; `at` moves behind it.
inline char32_t NextFolded(const Byte*& at, const Byte* end) {
  const Byte byte = *at;
  if (byte >= 0x80) return DecodeLong(at, end);
  ++at;
  return kFolded[byte];
}

inline bool Fits(char32_t token, char32_t character) {
  return token == character || token == kAnyOne || (token == kAnyDigit && character >= U'0' && character <= U'9');
}

/// Passes over plain characters that cannot be the token; long texts are mostly that.
inline void SkipTo(char32_t token, const Byte*& at, const Byte* end) {
  if (token >= 0x80) return;
  while (at < end && *at < 0x80 && kFolded[*at] != token) ++at;
}

char32_t Token(char32_t character) {
  return character == U'*' ? kAnyRun : character == U'?' ? kAnyOne : character == U'#' ? kAnyDigit : character;
}

}  // namespace

LikePattern::LikePattern(QUtf8StringView pattern) {
  const auto* at = reinterpret_cast<const Byte*>(pattern.data());
  const auto* end = at + pattern.size();
  while (at < end) {
    const char32_t token = Token(NextFolded(at, end));
    if (token == kAnyRun && !tokens_.empty() && tokens_.back() == kAnyRun) continue;
    tokens_.push_back(token);
    if (token != kAnyRun) ++shortest_;
  }
}

bool LikePattern::Matches(QUtf8StringView text) const {
  if (text.size() < shortest_) return false;
  const auto* at = reinterpret_cast<const Byte*>(text.data());
  const auto* end = at + text.size();
  const std::size_t count = tokens_.size();
  std::size_t next = 0;
  std::size_t afterRun = 0;  // the token behind the last "*" passed; 0 before the first
  const Byte* runEnd = nullptr;
  while (at < end) {
    if (next < count && tokens_[next] == kAnyRun) {
      afterRun = ++next;
      runEnd = at;
      if (next == count) return true;
      continue;
    }
    if (next < count && Fits(tokens_[next], NextFolded(at, end))) {
      ++next;
      continue;
    }
    if (afterRun == 0) return false;
    NextFolded(runEnd, end);
    SkipTo(tokens_[afterRun], runEnd, end);
    at = runEnd;
    next = afterRun;
  }
  return next == count || (next + 1 == count && tokens_[next] == kAnyRun);
}

namespace {

QUtf8StringView ValueText(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, text ? sqlite3_value_bytes(value) : 0};
}

void TalnikLike(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[1]) == SQLITE_NULL) return;
  // The pattern is the same for all rows of a statement: SQLite keeps what was made of it.
  auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
  if (pattern) {
    sqlite3_result_int(context, pattern->Matches(ValueText(arguments[1])));
    return;
  }
  auto made = std::make_unique<LikePattern>(ValueText(arguments[0]));
  sqlite3_result_int(context, made->Matches(ValueText(arguments[1])));
  sqlite3_set_auxdata(context, 0, made.release(), [](void* kept) { delete static_cast<LikePattern*>(kept); });
}

}  // namespace

int RegisterLike(sqlite3* db) {
  return sqlite3_create_function_v2(db, "talnik_like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY,
                                    nullptr, TalnikLike, nullptr, nullptr, nullptr);
}

}  // namespace talnik
