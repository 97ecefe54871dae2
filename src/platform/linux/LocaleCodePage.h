#pragma once

#include "platform/CodePage.h"

namespace talnik {

class LocaleCodePage : public CodePage {
 public:
  /// `charset` stands in for that of the locale.
  explicit LocaleCodePage(QByteArray charset = {});

  QString Decode(const QByteArray& bytes) const override;
  /// UTF-8 takes the place of a charset that cannot hold the text, or that Decode would read as other letters.
  QByteArray Encode(const QString& text) const override;

  /// Writes in the encoding that `before`, the old bytes of the same file, shows.
  QByteArray EncodeLike(const QByteArray& before, const QString& text) const;

 private:
  QByteArray charset_;
};

}  // namespace talnik
