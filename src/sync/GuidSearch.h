#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <map>
#include <unordered_map>
#include <vector>

namespace talnik {

/// Finds the guids in which a text stands, upper or lower case, without looking through all of them each time.
class GuidSearch {
 public:
  /// Adds a guid that is not there yet.
  void Add(const QString& guid);
  /// The guids that are LIKE *text*, wildcards and all.
  QStringList Containing(const QString& text);

 private:
  struct Guid {
    QString text;
    QString folded;
  };
  /// Places in guids_, by the hash of each part of one length.
  using Parts = std::unordered_multimap<std::size_t, std::size_t>;

  void AddParts(Parts& parts, qsizetype length, std::size_t place) const;
  const Parts* PartsOf(qsizetype length);

  std::vector<Guid> guids_;
  std::map<qsizetype, Parts> partsOfLength_;
};

}  // namespace talnik
