#include "platform/linux/LocaleCodePage.h"

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

/// The upper half of Windows-1250. Bytes that it leaves open stand for the control characters of the same number, so
/// that every byte comes back as it was.
constexpr std::array<char16_t, 128> UpperHalf = {
    0x20ac, 0x0081, 0x201a, 0x0083, 0x201e, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015a,
    0x0164, 0x017d, 0x0179, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203a, 0x015b, 0x0165, 0x017e, 0x017a, 0x00a0, 0x02c7, 0x02d8, 0x0141, 0x00a4, 0x0104, 0x00a6,
    0x00a7, 0x00a8, 0x00a9, 0x015e, 0x00ab, 0x00ac, 0x00ad, 0x00ae, 0x017b, 0x00b0, 0x00b1, 0x02db, 0x0142,
    0x00b4, 0x00b5, 0x00b6, 0x00b7, 0x00b8, 0x0105, 0x015f, 0x00bb, 0x013d, 0x02dd, 0x013e, 0x017c, 0x0154,
    0x00c1, 0x00c2, 0x0102, 0x00c4, 0x0139, 0x0106, 0x00c7, 0x010c, 0x00c9, 0x0118, 0x00cb, 0x011a, 0x00cd,
    0x00ce, 0x010e, 0x0110, 0x0143, 0x0147, 0x00d3, 0x00d4, 0x0150, 0x00d6, 0x00d7, 0x0158, 0x016e, 0x00da,
    0x0170, 0x00dc, 0x00dd, 0x0162, 0x00df, 0x0155, 0x00e1, 0x00e2, 0x0103, 0x00e4, 0x013a, 0x0107, 0x00e7,
    0x010d, 0x00e9, 0x0119, 0x00eb, 0x011b, 0x00ed, 0x00ee, 0x010f, 0x0111, 0x0144, 0x0148, 0x00f3, 0x00f4,
    0x0151, 0x00f6, 0x00f7, 0x0159, 0x016f, 0x00fa, 0x0171, 0x00fc, 0x00fd, 0x0163, 0x02d9};

QString FromWindows1250(const QByteArray& bytes) {
  QString text(bytes.size(), Qt::Uninitialized);
  std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return QChar(code < 0x80 ? char16_t{code} : UpperHalf[code - 0x80u]);
  });
  return text;
}

/// Nothing when the text holds a letter that the code page lacks.
std::optional<QByteArray> ToWindows1250(const QString& text) {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (const QChar letter : text) {
    if (letter.unicode() < 0x80) {
      bytes += static_cast<char>(letter.unicode());
      continue;
    }
    const auto found = std::find(UpperHalf.begin(), UpperHalf.end(), letter.unicode());
    if (found == UpperHalf.end()) return std::nullopt;
    bytes += static_cast<char>(0x80 + (found - UpperHalf.begin()));
  }
  return bytes;
}

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
  if (before.startsWith(ByteOrderMark)) return ByteOrderMark + text.toUtf8();
  if (IsAscii(before)) return Encode(text);
  if (FromUtf8(before)) return text.toUtf8();
  return ToWindows1250(text).value_or(text.toUtf8());
}

}  // namespace talnik
