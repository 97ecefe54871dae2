#pragma once

#include "platform/linux/IniText.h"
#include "platform/linux/LocaleCodePage.h"

#include <QByteArray>
#include <QString>

namespace talnik {

/// Reads and replaces files of sections and keys. The last file is kept and read again only after a change on disk.
class IniFile {
 public:
  /// What stands in the file; empty when there is none or it cannot be read.
  const IniText& Read(const QString& path) const;

  /// Replaces the file by `text`, in its old encoding and for this user alone. False when the file had to stay: it
  /// cannot be read, and so must not be lost, or cannot be written.
  bool Replace(const QString& path, const IniText& text) const;

 private:
  void Load(const QString& path) const;

  LocaleCodePage codePage_;
  mutable QString path_;
  mutable QByteArray stamp_;  ///< of the file as it was read; empty when it must be read again
  mutable bool readable_ = true;
  mutable QByteArray bytes_;
  mutable IniText text_;
};

}  // namespace talnik
