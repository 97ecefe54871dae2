#pragma once

#include "platform/Folders.h"

#include <QByteArray>

namespace talnik {

/// The disks and network folders among the lines of "mountinfo" that a user would look for files in.
QList<Folders::Place> MountPoints(const QByteArray& mountInfo);

}  // namespace talnik
