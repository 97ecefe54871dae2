#include "store/GuidSearch.h"
#include "store/Like.h"

#include <QByteArray>
#include <QRandomGenerator>
#include <QSet>

#include <gtest/gtest.h>

#include <array>

namespace talnik::test {

TEST(GuidSearch, FindsWhatThePatternFinds) {
  QRandomGenerator random(5);
  const auto text = [&random](int length, const char* letters, int count) {
    QString result;
    for (int i = 0; i < length; ++i) result += QChar::fromLatin1(letters[random.bounded(count)]);
    return result;
  };
  GuidSearch search;
  QSet<QString> guids;
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const QString guid = text(16 + random.bounded(30), "aAbB", 2 + 2 * (round % 2));
    if (!guids.contains(guid)) search.Add(guid);
    guids.insert(guid);
    QString part =
        text(1, "ab*?", 3 + round % 2) + guid.mid(random.bounded(5), std::array{2, 15, 17, 20}[round % 4]).toUpper();
    if (round % 3 > 0) part = part.mid(1);
    const LikePattern pattern(QByteArray('*' + part.toUtf8() + '*'));
    QSet<QString> expected;
    for (const QString& other : guids) {
      if (pattern.Matches(other.toUtf8())) expected.insert(other);
    }
    const QStringList list = search.Containing(part);
    EXPECT_EQ(QSet<QString>(list.begin(), list.end()), expected) << part.toStdString();
    EXPECT_EQ(list.size(), expected.size());
    found += static_cast<int>(list.size());
  }
  EXPECT_GT(found, 300);
}

}  // namespace talnik::test
