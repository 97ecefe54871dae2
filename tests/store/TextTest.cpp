#include "store/Like.h"
#include "store/Text.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

TEST(StoreText, CutsWhatIsShownAndStored) {
  const QString nul(u'\0');
  const std::pair<QString, QString> cases[] = {
      {TrimSeconds(u"15.1.2024 8:30:00"_qs), u"15.1.2024 8:30"_qs},
      {TrimSeconds(u"15.1.2024"_qs), u"15.1.2024"_qs},
      {TrimSeconds(u":00"_qs), u":00"_qs},
      {ExtractFileName(u"C:\\Data\\Record\\K15083.241"_qs), u"K15083.241"_qs},
      {ExtractFileName(u"/home/a/Record/new.wav"_qs), u"new.wav"_qs},
      {ExtractFileName(u"new.wav"_qs), u"new.wav"_qs},
      {StripAtNul(u"a"_qs + nul + u"b"_qs), u"a"_qs},
      {StripAtNul(u"ab"_qs), u"ab"_qs},
      {SeriesBase(u"a#b_20240115T073000Z_x"_qs), u"ab"_qs},
      {CutToSize(u"abc😀"_qs, 4), u"abc"_qs},  // never in the middle of a character
      {CutToSize(u"abc😀"_qs, 5), u"abc😀"_qs},
  };
  for (const auto& [cut, expected] : cases) EXPECT_EQ(cut, expected);
  const QString guid = NewGuidText();
  EXPECT_TRUE(QRegularExpression(u"^[0-9a-f]{32}$"_qs).match(guid).hasMatch());
  EXPECT_NE(NewGuidText(), guid);
}

TEST(Like, KnowsItsWildcardsAndNoCase) {
  const struct {
    const char *pattern, *matching, *other;
  } cases[] = {
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
  for (const auto& [pattern, matching, other] : cases) {
    EXPECT_TRUE(LikePattern(pattern).Matches(matching)) << pattern << " on " << matching;
    EXPECT_FALSE(other && LikePattern(pattern).Matches(other)) << pattern << " on " << other;
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
