#include "menus/CzechOrder.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <bitset>
#include <numeric>
#include <string_view>

namespace talnik {

namespace {

constexpr std::size_t CodeUnits = 0x10000;
/// The one letter of the language that is written with two.
constexpr char16_t LetterCh[] = u"ch";

bool IsCh(const QString& text, qsizetype at) {
  return at + 1 < text.size() &&
         QStringView(text).sliced(at, 2).compare(QStringView(LetterCh), Qt::CaseInsensitive) == 0;
}

}  // namespace

CzechOrder::CzechOrder() : collator_(QLocale(u"cs_CZ"_qs)) {}

/// True when what follows decides between the two, so that they differ in case or in an accent that does not count.
bool CzechOrder::IsSameLetter(const QString& one, const QString& other) const {
  return collator_.compare(one + u'b', other + u'a') > 0;
}

/// Asks the collator for the order of the letters that occur.
void CzechOrder::Rank(const QList<QString>& names) {
  std::bitset<CodeUnits> occurs;
  for (const QString& name : names) {
    for (const QChar unit : name) occurs.set(unit.unicode());
  }
  QStringList letters{QString::fromUtf16(LetterCh)};
  for (std::size_t unit = 0; unit < CodeUnits; ++unit) {
    if (occurs.test(unit)) letters << QString(QChar(static_cast<char16_t>(unit)));
  }
  std::sort(letters.begin(), letters.end(),
            [this](const QString& one, const QString& other) { return collator_.compare(one, other) < 0; });
  ranks_.assign(CodeUnits, 0);
  char16_t rank = 1;
  for (qsizetype i = 0; i < letters.size(); ++i) {
    if (i > 0 && !IsSameLetter(letters[i - 1], letters[i])) ++rank;
    const bool isPassedOver = collator_.compare(letters[i] + u'a', u"a"_qs) == 0;
    (letters[i].size() > 1 ? rankOfCh_ : ranks_[letters[i][0].unicode()]) = isPassedOver ? u'\0' : rank;
  }
}

void CzechOrder::AppendKey(const QString& name, std::u16string& keys) const {
  for (qsizetype i = 0; i < name.size(); ++i) {
    const bool isCh = IsCh(name, i);
    const char16_t rank = isCh ? rankOfCh_ : ranks_[name[i].unicode()];
    if (rank != 0) keys += rank;
    if (isCh) ++i;
  }
}

std::vector<int> CzechOrder::Of(const QList<QString>& names) {
  QList<QString> composed;
  composed.reserve(names.size());
  for (const QString& name : names) composed << name.normalized(QString::NormalizationForm_C);
  Rank(composed);
  std::u16string keys;
  std::vector<std::size_t> starts;
  for (const QString& name : composed) {
    starts.push_back(keys.size());
    AppendKey(name, keys);
  }
  starts.push_back(keys.size());
  const auto keyOf = [&](int index) {
    const auto at = static_cast<std::size_t>(index);
    return QStringView(keys.data() + starts[at], keys.data() + starts[at + 1]);
  };
  std::vector<int> order(starts.size() - 1);
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](int one, int other) {
    if (const int byLetters = keyOf(one).compare(keyOf(other))) return byLetters < 0;
    const int byRest = collator_.compare(composed[one], composed[other]);
    return byRest != 0 ? byRest < 0 : names[one] < names[other];
  });
  return order;
}

}  // namespace talnik
