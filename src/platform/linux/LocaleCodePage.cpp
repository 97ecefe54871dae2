#include "platform/linux/LocaleCodePage.h"

#include "platform/Windows1250.h"

#include <QStringConverter>

#include <iconv.h>
#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

namespace talnik {

namespace {

constexpr char ByteOrderMark[] = "\xef\xbb\xbf";

/// The text in any charset of the C library; nothing when it does not know it or the charset lacks a letter.
std::optional<QByteArray> ToCharset(const QByteArray& charset, const QString& text) {
  const iconv_t converter = iconv_open(charset.constData(), "UTF-8");
  if (reinterpret_cast<std::intptr_t>(converter) == -1) return std::nullopt;
  QByteArray input = text.toUtf8();
  QByteArray output(input.size() * 4 + 16, '\0');
  char* from = input.data();
  char* to = output.data();
  auto left = static_cast<std::size_t>(input.size());
  auto room = static_cast<std::size_t>(output.size());
  const bool converted = iconv(converter, &from, &left, &to, &room) != std::size_t(-1);
  iconv_close(converter);
  if (!converted) return std::nullopt;
  output.truncate(output.size() - static_cast<qsizetype>(room));
  return output;
}

/// The charset that the environment asks for, whatever locale the process runs in by now.
QByteArray CharsetOfLocale() {
  const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
  if (!locale) return "UTF-8";
  QByteArray charset = nl_langinfo_l(CODESET, locale);
  freelocale(locale);
  return charset;
}

std::optional<QString> FromUtf8(const QByteArray& bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8);
  QString text = decoder.decode(bytes);
  // What is cut off within a letter shows only when more is asked for.
  text += decoder.decode(QByteArrayView("\n"));
  if (decoder.hasError()) return std::nullopt;
  text.chop(1);
  return text;
}

bool IsAscii(const QByteArray& bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

}  // namespace

LocaleCodePage::LocaleCodePage(QByteArray charset)
    : charset_(charset.isEmpty() ? CharsetOfLocale() : std::move(charset)) {}

QString LocaleCodePage::Decode(const QByteArray& bytes) const {
  return FromUtf8(bytes).value_or(FromWindows1250(bytes));
}

QByteArray LocaleCodePage::Encode(const QString& text) const {
  if (charset_.compare("UTF-8", Qt::CaseInsensitive) == 0) return text.toUtf8();
  const std::optional<QByteArray> bytes = ToCharset(charset_, text);
  return bytes && Decode(*bytes) == text ? *bytes : text.toUtf8();
}

QByteArray LocaleCodePage::EncodeLike(const QByteArray& before, const QString& text) const {
  if (IsAscii(before)) return Encode(text);
  // A mark in front of what is no UTF-8 was read as letters, which are in the text.
  if (FromUtf8(before)) return (before.startsWith(ByteOrderMark) ? ByteOrderMark : "") + text.toUtf8();
  return ToWindows1250(text).value_or(text.toUtf8());
}

}  // namespace talnik
