#include "store/GuidSearch.h"

#include "store/Like.h"

#include <QByteArray>

#include <algorithm>
#include <utility>

namespace talnik {

namespace {

/// Parts shorter than this are in too many guids, and of too many lengths there would be too many parts.
constexpr qsizetype kShortestPart = 16;
constexpr std::size_t kMostLengths = 4;

constexpr std::uint32_t kHashBase = 16777619;

/// Letter by letter, so that parts keep their length. Where nothing is to be folded the text is shared.
QString Folded(QString text) {
  const QString& given = text;
  const auto isFolded = [](QChar letter) { return letter == letter.toCaseFolded(); };
  if (std::all_of(given.cbegin(), given.cend(), isFolded)) return text;
  std::transform(text.begin(), text.end(), text.begin(), [](QChar letter) { return letter.toCaseFolded(); });
  return text;
}

std::uint32_t HashOf(QStringView part) {
  std::uint32_t hash = 0;
  for (const QChar letter : part) hash = hash * kHashBase + letter.unicode();
  return hash;
}

}  // namespace

/// The hash of each part is made from that of the part before it.
void GuidSearch::AppendParts(std::vector<Part>& run, qsizetype length, std::size_t place) const {
  const QStringView guid = guids_[place].folded;
  if (guid.size() < length) return;
  std::uint32_t leaving = 1;
  for (qsizetype i = 1; i < length; ++i) leaving *= kHashBase;
  std::uint32_t hash = HashOf(guid.first(length));
  run.push_back({hash, static_cast<std::uint32_t>(place)});
  for (qsizetype at = length; at < guid.size(); ++at) {
    hash = (hash - guid[at - length].unicode() * leaving) * kHashBase + guid[at].unicode();
    run.push_back({hash, static_cast<std::uint32_t>(place)});
  }
}

void GuidSearch::AddRun(Parts& parts, std::vector<Part> run) {
  if (run.empty()) return;
  std::sort(run.begin(), run.end());
  while (!parts.empty() && parts.back().size() <= 2 * run.size()) {
    std::vector<Part> merged(parts.back().size() + run.size());
    std::merge(parts.back().begin(), parts.back().end(), run.begin(), run.end(), merged.begin());
    parts.pop_back();
    run = std::move(merged);
  }
  parts.push_back(std::move(run));
}

void GuidSearch::Add(const QString& guid) {
  guids_.push_back({guid, Folded(guid)});
  for (auto& [length, parts] : partsOfLength_) {
    std::vector<Part> run;
    AppendParts(run, length, guids_.size() - 1);
    AddRun(parts, std::move(run));
  }
}

const GuidSearch::Parts* GuidSearch::PartsOf(qsizetype length) {
  if (const auto known = partsOfLength_.find(length); known != partsOfLength_.end()) return &known->second;
  if (length < kShortestPart || partsOfLength_.size() == kMostLengths) return nullptr;
  std::vector<Part> run;
  for (std::size_t place = 0; place < guids_.size(); ++place) AppendParts(run, length, place);
  Parts& parts = partsOfLength_[length];
  AddRun(parts, std::move(run));
  return &parts;
}

std::vector<std::size_t> GuidSearch::PlacesOfPattern(const QString& text) const {
  const LikePattern pattern(QByteArray('*' + text.toUtf8() + '*'));
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < guids_.size(); ++place) {
    if (pattern.Matches(guids_[place].text.toUtf8())) places.push_back(place);
  }
  return places;
}

std::vector<std::size_t> GuidSearch::PlacesOf(const QString& text) {
  const QString folded = Folded(text);
  std::vector<std::size_t> places;
  const auto take = [&](std::size_t place) {
    if (guids_[place].folded.contains(folded)) places.push_back(place);
  };
  const Parts* parts = PartsOf(folded.size());
  if (!parts) {
    for (std::size_t place = 0; place < guids_.size(); ++place) take(place);
    return places;
  }
  const std::uint32_t hash = HashOf(folded);
  for (const std::vector<Part>& run : *parts) {
    auto part = std::lower_bound(run.begin(), run.end(), Part{hash, 0});
    for (; part != run.end() && part->hash == hash; ++part) take(part->place);
  }
  // A guid may hold the text twice.
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

QStringList GuidSearch::Containing(const QString& text) {
  const bool isPattern = text.contains(u'*') || text.contains(u'?') || text.contains(u'#');
  QStringList found;
  for (const std::size_t place : isPattern ? PlacesOfPattern(text) : PlacesOf(text)) found << guids_[place].text;
  return found;
}

}  // namespace talnik
