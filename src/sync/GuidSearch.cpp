#include "sync/GuidSearch.h"

#include "store/Like.h"

#include <QByteArray>

#include <algorithm>

namespace talnik {

namespace {

/// Parts shorter than this are in too many guids, and of too many lengths there would be too many parts.
constexpr qsizetype kShortestPart = 16;
constexpr std::size_t kMostLengths = 4;

/// Letter by letter, so that parts keep their length.
QString Folded(QString text) {
  std::transform(text.begin(), text.end(), text.begin(), [](QChar letter) { return letter.toCaseFolded(); });
  return text;
}

std::size_t HashOf(QStringView part) {
  return qHash(part, 0);
}

}  // namespace

void GuidSearch::AddParts(Parts& parts, qsizetype length, std::size_t place) const {
  const QStringView guid = guids_[place].folded;
  for (qsizetype from = 0; from + length <= guid.size(); ++from) parts.emplace(HashOf(guid.mid(from, length)), place);
}

void GuidSearch::Add(const QString& guid) {
  guids_.push_back({guid, Folded(guid)});
  for (auto& [length, parts] : partsOfLength_) AddParts(parts, length, guids_.size() - 1);
}

const GuidSearch::Parts* GuidSearch::PartsOf(qsizetype length) {
  if (const auto known = partsOfLength_.find(length); known != partsOfLength_.end()) return &known->second;
  if (length < kShortestPart || partsOfLength_.size() == kMostLengths) return nullptr;
  Parts& parts = partsOfLength_[length];
  for (std::size_t place = 0; place < guids_.size(); ++place) AddParts(parts, length, place);
  return &parts;
}

QStringList GuidSearch::Containing(const QString& text) {
  const bool isPattern = text.contains(u'*') || text.contains(u'?') || text.contains(u'#');
  std::vector<std::size_t> places;
  if (isPattern) {
    const LikePattern pattern(QByteArray('*' + text.toUtf8() + '*'));
    for (std::size_t place = 0; place < guids_.size(); ++place) {
      if (pattern.Matches(guids_[place].text.toUtf8())) places.push_back(place);
    }
  } else {
    const QString folded = Folded(text);
    const auto take = [&](std::size_t place) {
      if (guids_[place].folded.contains(folded)) places.push_back(place);
    };
    if (const Parts* parts = PartsOf(folded.size())) {
      const auto [from, to] = parts->equal_range(HashOf(folded));
      for (auto part = from; part != to; ++part) take(part->second);
    } else {
      for (std::size_t place = 0; place < guids_.size(); ++place) take(place);
    }
  }
  // A guid may hold the text twice.
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  QStringList found;
  for (const std::size_t place : places) found << guids_[place].text;
  return found;
}

}  // namespace talnik
