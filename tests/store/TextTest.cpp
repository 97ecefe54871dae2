#include "store/Like.h"
#include "store/Text.h"

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

TEST(StoreText, CutsWhatIsShownAndStored) {
  EXPECT_EQ(TrimSeconds(u"15.1.2024 8:30:00"_qs), u"15.1.2024 8:30"_qs);
  EXPECT_EQ(TrimSeconds(u"15.1.2024"_qs), u"15.1.2024"_qs);
  EXPECT_EQ(TrimSeconds(u":00"_qs), u":00"_qs);
  EXPECT_EQ(ExtractFileName(u"C:\\Data\\Record\\K15083.241"_qs), u"K15083.241"_qs);
  EXPECT_EQ(ExtractFileName(u"/home/a/Record/new.wav"_qs), u"new.wav"_qs);
  EXPECT_EQ(ExtractFileName(u"new.wav"_qs), u"new.wav"_qs);
  EXPECT_EQ(StripAtNul(QString(u"a"_qs + QChar(0) + u"b"_qs)), u"a"_qs);
  EXPECT_EQ(StripAtNul(u"ab"_qs), u"ab"_qs);
  EXPECT_EQ(SeriesBase(u"a#b_20240115T073000Z_x"_qs), u"ab"_qs);
  const QString smile = QString::fromUtf8("abc😀");
  EXPECT_EQ(CutToSize(smile, 4), u"abc"_qs) << "never in the middle of a character";
  EXPECT_EQ(CutToSize(smile, 5), smile);
}

TEST(StoreText, MakesFreshIdentities) {
  const QString guid = NewGuidText();
  EXPECT_EQ(guid.size(), 32);
  for (const QChar digit : guid) EXPECT_TRUE(u"0123456789abcdef"_qs.contains(digit));
  EXPECT_NE(NewGuidText(), guid);
}

TEST(Like, KnowsItsWildcardsAndNoCase) {
  struct Case {
    const char* pattern;
    const char* matching;
    const char* other;
  };
  const Case cases[] = {
      {"*zub*", "U ZUBAŘE", "U zuřivce"},
      {"*ČÍŠE*", "plná číše vína", "cise"},
      {"*", "", nullptr},
      {"", "", "a"},
      {"*a", "ba", "ab"},
      {"a*", "ab", "ba"},
      {"**a**b**", "xaxbx", "xbxa"},
      {"*ab*", "aab", "aa"},
      {"*abac*", "ababac", "abab"},
      {"?", "ž", ""},
      {"??", "a😀", "😀"},
      {"*v #:##*", "v 8:30", "v x:30"},
      {"*[a-c]*", "[a-c]", "b"},
      {"*%_*", "100%_sleva", "100x"},
      {"*'\";--*", "a'\";--b", "a"},
  };
  for (const Case& test : cases) {
    EXPECT_TRUE(LikePattern(test.pattern).Matches(test.matching)) << test.pattern << " on " << test.matching;
    EXPECT_FALSE(test.other && LikePattern(test.pattern).Matches(test.other)) << test.pattern << " on " << test.other;
  }
}

TEST(Like, StaysWithinBrokenAndLongText) {
  EXPECT_FALSE(LikePattern("*x*").Matches(QUtf8StringView("\xC4\xF0\x9F", 3)));
  EXPECT_TRUE(LikePattern("*b*").Matches(QUtf8StringView("a\0b", 3)));
  const QByteArray longText = QByteArray(10'000'000, 'a');
  EXPECT_FALSE(LikePattern(QByteArray('*' + longText + "b*")).Matches(QByteArray(255, 'a')));
}

}  // namespace
}  // namespace talnik::test
