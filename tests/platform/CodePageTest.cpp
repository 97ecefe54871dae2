#include "platform/linux/LocaleCodePage.h"

#include <gtest/gtest.h>

namespace talnik::test {

TEST(LocaleCodePage, ReadsUtf8ElseWindows1250) {
  const LocaleCodePage page("UTF-8");
  const std::pair<QByteArray, QString> cases[] = {
      {"Příliš žluťoučký", u"Příliš žluťoučký"_qs},
      {"\xef\xbb\xbfkůň", u"kůň"_qs},
      {"P\xf8\xedli\x9a \x9elu\x9dou\xe8k\xfd k\xf9\xf2", u"Příliš žluťoučký kůň"_qs},
      {"\x8a\x8d\x8e\x80", u"ŠŤŽ€"_qs},
      {"cut off \xc5", u"cut off Ĺ"_qs},
      {QByteArray("a\0b", 3), QString(u"a\0b"_qs)},
      {"", QString()},
  };
  for (const auto& [bytes, text] : cases) EXPECT_EQ(page.Decode(bytes).toStdString(), text.toStdString());
}

TEST(LocaleCodePage, EveryByteOfAnOlderFileComesBackAsItWas) {
  QByteArray bytes("\xff");
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  const LocaleCodePage page("UTF-8");
  EXPECT_EQ(page.EncodeLike(bytes, page.Decode(bytes)), bytes);
  const QByteArray marked("\xef\xbb\xbfx\xf5");
  EXPECT_EQ(page.EncodeLike(marked, page.Decode(marked)), marked) << "a mark in front of what is no UTF-8";
  EXPECT_EQ(page.EncodeLike("\xef\xbb\xbfold", u"č"_qs), "\xef\xbb\xbfč") << "its byte order mark too";
}

TEST(LocaleCodePage, WritesTheCharsetOfTheLocaleUnlessLettersWouldBeLost) {
  const struct {
    QByteArray charset;
    QString text;
    QByteArray bytes;
  } cases[] = {
      {"UTF-8", u"kůň"_qs, "kůň"},
      {"CP1250", u"kůň š"_qs, "k\xf9\xf2 \x9a"},
      {"CP1250", u"Ω"_qs, "Ω"},
      {"ISO-8859-2", u"kůň"_qs, "k\xf9\xf2"},
      {"ISO-8859-2", u"š"_qs, "š"},  // its byte would be read as another letter
      {"ANSI_X3.4-1968", u"abc"_qs, "abc"},
      {"ANSI_X3.4-1968", u"č"_qs, "č"},
      {"no such charset", u"č"_qs, "č"},
  };
  for (const auto& one : cases) {
    const LocaleCodePage page(one.charset);
    EXPECT_EQ(page.Encode(one.text), one.bytes) << one.charset.constData();
    EXPECT_EQ(page.Decode(page.Encode(one.text)), one.text) << one.charset.constData();
  }
}

}  // namespace talnik::test
