#include "Fuzz.h"
#include "platform/linux/IniText.h"
#include "platform/linux/LocaleCodePage.h"

using namespace talnik;

/// The bytes of a settings file, read and written as the program does.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const LocaleCodePage codePage("UTF-8");
  const QByteArray bytes = fuzz::Bytes(data, size);
  const QString text = codePage.Decode(bytes);
  const IniText before(text);
  fuzz::Require(before.Text() == QString(text).remove(QChar::Null), "what was read is written letter by letter");
  if (!bytes.contains('\0')) {
    fuzz::Require(codePage.EncodeLike(bytes, before.Text()) == bytes, "a file without a change keeps its bytes");
  }
  const QString other = before.Value(u"Voice"_qs, u"Rate"_qs).value_or(u"-"_qs);
  const QString value = text.left(20);
  IniText after = before;
  after.Set(u"Application"_qs, u"User"_qs, value);
  const IniText again(after.Text());
  QString oneLine = value;
  oneLine.replace(u"\r\n"_qs, u" "_qs);
  for (const QChar breaking : {u'\r', u'\n', u'\0'}) oneLine.replace(breaking, u' ');
  fuzz::Require(again.Value(u"application"_qs, u"USER"_qs) == oneLine.trimmed(), "a value that was set is read");
  fuzz::Require(again.Value(u"Voice"_qs, u"Rate"_qs).value_or(u"-"_qs) == other, "no other value is touched");
  after.Remove(u"Application"_qs, u"User"_qs);
  fuzz::Require(!IniText(after.Text()).Value(u"Application"_qs, u"User"_qs), "a value that was taken away is gone");
  return 0;
}
