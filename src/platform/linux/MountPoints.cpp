#include "platform/linux/MountPoints.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace talnik {

namespace {

using Kind = Folders::Place::Kind;

/// Fields of a line, from 0; the type of the file system and its source stand behind a lone hyphen.
constexpr qsizetype MountPointField = 4;

/// Where the system mounts for itself.
constexpr std::array SystemFolders = {"/boot", "/dev",  "/efi", "/etc", "/proc",
                                      "/run",  "/snap", "/sys", "/usr", "/var"};
/// Where desktops mount what is plugged in.
constexpr std::array MediaFolders = {"/media/", "/mnt/", "/run/media/"};
constexpr std::array NetworkTypes = {"9p",         "afs", "ceph", "cifs", "davfs", "fuse.davfs2", "fuse.rclone",
                                     "fuse.sshfs", "ncp", "nfs",  "nfs4", "smb3",  "smbfs",       "virtiofs"};

/// Blanks and backslashes of a path are written as three octal digits.
QByteArray Unescaped(const QByteArray& text) {
  QByteArray plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    bool isOctal = false;
    const int code = text[i] == '\\' ? text.mid(i + 1, 3).toInt(&isOctal, 8) : 0;
    plain += isOctal ? static_cast<char>(code) : text[i];
    if (isOctal) i += 3;
  }
  return plain;
}

bool IsOfTheSystem(const QByteArray& path) {
  return path == "/" || std::any_of(SystemFolders.begin(), SystemFolders.end(), [&path](const char* folder) {
           return QByteArray(path + '/').startsWith(QByteArray(folder).append('/'));
         });
}

bool IsMedia(const QByteArray& path) {
  return std::any_of(MediaFolders.begin(), MediaFolders.end(),
                     [&path](const char* folder) { return path.startsWith(folder); });
}

bool IsNetwork(const QByteArray& type) {
  return std::any_of(NetworkTypes.begin(), NetworkTypes.end(), [&type](const char* name) { return type == name; });
}

}  // namespace

QList<Folders::Place> MountPoints(const QByteArray& mountInfo) {
  QList<Folders::Place> places;
  for (const QByteArray& line : mountInfo.split('\n')) {
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype hyphen = fields.indexOf("-", MountPointField + 1);
    if (hyphen < 0 || hyphen + 2 >= fields.size()) continue;
    const QByteArray path = Unescaped(fields[MountPointField]);
    const bool network = IsNetwork(fields[hyphen + 1]);
    const bool real = network || fields[hyphen + 2].startsWith("/dev/");
    if (!IsMedia(path) && (!real || IsOfTheSystem(path))) continue;
    const QString name = QFile::decodeName(path);
    const bool known =
        std::any_of(places.begin(), places.end(), [&name](const Folders::Place& place) { return place.path == name; });
    if (!known) places << Folders::Place{network ? Kind::Network : Kind::Disk, name};
  }
  return places;
}

}  // namespace talnik
