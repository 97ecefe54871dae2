#include "store/Like.h"
#include "store/Text.h"

#include <QSet>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

TEST(StoreText, ShowsADateWithoutItsSeconds) {
  const std::pair<QString, QString> cases[] = {{u"15.1.2024 8:30:00"_qs, u"15.1.2024 8:30"_qs},
                                               {u"15.1.2024"_qs, u"15.1.2024"_qs},
                                               {u":00"_qs, u":00"_qs},
                                               {QString(), QString()}};
  for (const auto& [stored, shown] : cases) EXPECT_EQ(TrimSeconds(stored), shown);
}

TEST(StoreText, TakesTheNameBehindEitherSeparator) {
  EXPECT_EQ(ExtractFileName(u"C:\\Data\\Record\\K15083.241"_qs), u"K15083.241"_qs);
  EXPECT_EQ(ExtractFileName(u"/home/a/Record/new.wav"_qs), u"new.wav"_qs);
  EXPECT_EQ(ExtractFileName(u"new.wav"_qs), u"new.wav"_qs);
}

TEST(StoreText, CutsAtNulAndFindsTheBaseOfASeries) {
  EXPECT_EQ(StripAtNul(QString(u"a"_qs + QChar(0) + u"b"_qs)), u"a"_qs);
  EXPECT_EQ(StripAtNul(u"ab"_qs), u"ab"_qs);
  EXPECT_EQ(SeriesBase(u"a#b_20240115T073000Z_x"_qs), u"ab"_qs);
  EXPECT_EQ(SeriesBase(u"_20240115"_qs), QString());
}

TEST(StoreText, NeverCutsACharacterInTwo) {
  const QString smile = QString::fromUtf8("😀");
  EXPECT_EQ(CutToSize(u"abc"_qs + smile, 4), u"abc"_qs);
  EXPECT_EQ(CutToSize(u"abc"_qs + smile, 5), QString(u"abc"_qs + smile));
  EXPECT_EQ(CutToSize(u"abc"_qs, 0), QString());
}

TEST(StoreText, MakesFreshIdentities) {
  QSet<QString> seen;
  for (int i = 0; i < 100; ++i) {
    const QString guid = NewGuidText();
    EXPECT_EQ(guid.size(), 32);
    for (const QChar digit : guid) EXPECT_TRUE(u"0123456789abcdef"_qs.contains(digit));
    seen.insert(guid);
  }
  EXPECT_EQ(seen.size(), 100);
}

TEST(Like, KnowsItsWildcardsAndNoCase) {
  struct Case {
    const char* pattern;
    const char* text;
    bool matches;
  };
  const Case cases[] = {
      {"*zub*", "U ZUBAŘE", true},
      {"*ČÍŠE*", "plná číše vína", true},
      {"*ř*", "Ř", true},
      {"*cise*", "číše", false},
      {"*", "", true},
      {"", "", true},
      {"", "a", false},
      {"a", "ab", false},
      {"*a", "ba", true},
      {"*a", "ab", false},
      {"a*", "ab", true},
      {"**a**b**", "xaxbx", true},
      {"*ab*", "aab", true},
      {"*abac*", "ababac", true},
      {"?", "ž", true},
      {"?", "😀", true},
      {"?", "", false},
      {"??", "a", false},
      {"#", "7", true},
      {"#", "x", false},
      {"*v #:##*", "schůzka v 8:30", true},
      {"*[a-c]*", "b", false},
      {"*%_*", "100%_sleva", true},
      {"*%*", "sto", false},
      {"*'\";--*", "a'\";--b", true},
  };
  for (const Case& test : cases) {
    EXPECT_EQ(LikePattern(test.pattern).Matches(test.text), test.matches) << test.pattern << " on " << test.text;
  }
}

TEST(Like, StaysWithinBrokenAndLongText) {
  EXPECT_FALSE(LikePattern("*x*").Matches(QUtf8StringView("\xC4\xF0\x9F", 3)));
  EXPECT_TRUE(LikePattern("*b*").Matches(QUtf8StringView("a\0b", 3)));
  const QByteArray longText = QByteArray(10'000'000, 'a');
  EXPECT_FALSE(LikePattern(QByteArray('*' + longText + "b*")).Matches(QByteArray(255, 'a')));
  EXPECT_TRUE(LikePattern(longText).Matches(longText));
}

}  // namespace
}  // namespace talnik::test
