#include "platform/linux/SpeechText.h"

#include <gtest/gtest.h>

namespace talnik::test {

TEST(SpeechText, TextsAreFreedOfWhatCannotBeSaid) {
  const struct {
    QString text, speakable;
  } cases[] = {{u"  Dobrý den\n"_qs, u"Dobrý den"_qs},
               {u"a"_qs + QChar(0) + u"b\x1b"_qs + u"c"_qs, u"a b c"_qs},
               {u" \r\n\t"_qs + QChar(0), QString()},
               {QString(), QString()},
               {u"..."_qs, u"..."_qs}};
  for (const auto& one : cases) {
    EXPECT_EQ(SpeakableText(one.text), one.speakable);
    EXPECT_EQ(IsSpeakable(one.text), !one.speakable.isEmpty());
  }
}

TEST(SpeechText, ACharacterIsSpelledUnlessItHasNoSound) {
  const struct {
    QString character, said;
    bool isWords;
  } cases[] = {{u"a"_qs, u"a"_qs, false},     {u"Č"_qs, u"Č"_qs, false},
               {u"."_qs, u"."_qs, false},     {u"\U0001f600"_qs, u"\U0001f600"_qs, false},
               {u" "_qs, u"mezera"_qs, true}, {u"\t"_qs, u"tabulátor"_qs, true},
               {u"ano"_qs, u"ano"_qs, true},  {u"\n"_qs, u"nový řádek"_qs, true},
               {QString(), QString(), true},  {QString(QChar(0)), QString(), true}};
  for (const auto& one : cases) {
    bool isWords = false;
    EXPECT_EQ(SpeakableCharacter(one.character, isWords), one.said);
    EXPECT_EQ(isWords, one.isWords) << one.character.toStdString();
  }
}

TEST(SpeechText, ALongTextIsCutBehindSentencesOrElseBetweenWords) {
  const QString sentence = u"Jedna dvě tři čtyři. "_qs;
  const std::pair<QString, QChar> cases[] = {{sentence, u' '},
                                             {sentence.repeated(500), u'.'},
                                             {u"slovo "_qs.repeated(1000), u'o'},
                                             {QString(5000, u'x'), u'x'},
                                             {u'a' + u"\U0001f600"_qs.repeated(3000), u'\xde00'}};
  for (const auto& [text, ending] : cases) {
    for (qsizetype from = 0; from < text.size();) {
      const qsizetype end = PieceEnd(text, from);
      ASSERT_TRUE(end > from && end - from <= 2000 && end <= text.size());
      EXPECT_TRUE(end == text.size() || text.at(end - 1) == ending) << text.left(20).toStdString();
      from = end;
    }
  }
}

TEST(SpeechText, PatienceGrowsWithTheTextAndMoreSoWithDigits) {
  EXPECT_GT(PatienceFor(u"dvacet slov"_qs), PatienceFor(u"slov"_qs));
  EXPECT_GT(PatienceFor(u"2024"_qs), PatienceFor(u"rok "_qs));
  const QString page(100000, u'a');
  EXPECT_GE(PatienceFor(page), std::chrono::milliseconds(100000 * 150));
}

}  // namespace talnik::test
