#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <map>
#include <vector>

namespace talnik {

/// Finds the guids in which a text stands, upper or lower case, without looking through all of them each time.
class GuidSearch {
 public:
  /// Adds a guid that is not there yet.
  void Add(const QString& guid);
  /// The guids that are LIKE *text*, wildcards and all, each once.
  QStringList Containing(const QString& text);

 private:
  struct Guid {
    QString text;
    QString folded;
  };
  struct Part {
    std::uint32_t hash;
    std::uint32_t place;  ///< in guids_
    /// Compared as one number: there are many to sort.
    std::uint64_t Rank() const { return (std::uint64_t{hash} << 32) | place; }
    friend bool operator<(const Part& a, const Part& b) { return a.Rank() < b.Rank(); }
  };
  /// Sorted runs, each more than twice as long as the next.
  using Parts = std::vector<std::vector<Part>>;

  void AppendParts(std::vector<Part>& run, qsizetype length, std::size_t place) const;
  static void AddRun(Parts& parts, std::vector<Part> run);
  const Parts* PartsOf(qsizetype length);
  std::vector<std::size_t> PlacesOf(const QString& text);
  std::vector<std::size_t> PlacesOfPattern(const QString& text) const;

  std::vector<Guid> guids_;
  std::map<qsizetype, Parts> partsOfLength_;
};

}  // namespace talnik
