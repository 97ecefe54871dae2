#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QIODevice;

namespace talnik {

/// Who may read a file that is written.
enum class Readers {
  AsUsual,   ///< who reads the old one; for a new one what the user lets new files be
  UserAlone  ///< nobody else, whatever it was before
};

/// Replaces a file by what `fill` writes into it: the old one stays until all of the new one is on the disk. A link of
/// the user's own is followed. False, and the reason for the user, when it could not be done or `fill` returned false.
bool ReplaceFile(const QString& path, const std::function<bool(QIODevice& file)>& fill, Readers readers,
                 QString& reason);

/// The same with bytes that are at hand.
bool WriteWholeFile(const QString& path, const QByteArray& bytes, Readers readers, QString& reason);

/// Removes from a folder what ReplaceFile left of these names when the process was killed within it. What is young may
/// be under way; a link and what is another user's stay.
void SweepFolder(const QString& folder, const QStringList& names);

/// The bytes of a file; nothing, and the reason for the user, when it cannot be read as a whole or is larger than any
/// file of the program's.
std::optional<QByteArray> ReadWholeFile(const QString& path, QString& reason);

}  // namespace talnik
