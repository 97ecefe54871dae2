#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace talnik {

/// Files of sections and keys (ini). Files are read and written as a whole; lines that no call names survive a write.
class Profile {
 public:
  struct Entry {
    QString section;
    QString key;
    std::optional<QString> text;  ///< nothing deletes the key
  };

  virtual ~Profile() = default;

  /// The text of a key without outer blanks; nothing when the file, the section or the key is missing.
  virtual std::optional<QString> Text(const QString& path, const QString& section, const QString& key) const = 0;

  /// True when the section holds at least one key.
  virtual bool SectionExists(const QString& path, const QString& section) const = 0;

  /// Writes the entries in their order, in one replacement of the file. False when the old file had to stay.
  virtual bool Write(const QString& path, const QList<Entry>& entries) = 0;
};

}  // namespace talnik
