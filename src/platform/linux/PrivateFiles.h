#pragma once

#include <QByteArray>
#include <QString>

namespace talnik {

/// Makes the folder and its parents, for the user alone; what exists stays as it is. False when it is not there then.
bool MakePrivateFolder(const QString& path);

/// Makes the folder, or closes it to others when it is the user's own already. False when it is a link, another user's,
/// or cannot be made.
bool ClaimPrivateFolder(const QString& path);

/// Replaces the file in one step, readable for the user alone; its folder is made when needed. False when it could not
/// be written; the old file is left then.
bool ReplacePrivateFile(const QString& path, const QByteArray& bytes);

}  // namespace talnik
