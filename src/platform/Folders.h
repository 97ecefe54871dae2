#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace talnik {

/// The folders and files of the machine, read without ever waiting for a disk that does not answer.
class Folders {
 public:
  enum class Outcome {
    Folder,    ///< it was read
    File,      ///< a plain file lies there
    Missing,   ///< nothing lies there; the folder around it does
    NoFolder,  ///< nothing lies there, and no folder around it
    Refused,   ///< it may not be read, or is nothing to read
    NoAnswer,  ///< the disk or the network did not answer
  };

  struct Entry {
    QString name;
    bool isFolder = false;
    bool isLink = false;
  };

  struct Answer {
    Outcome outcome = Outcome::Refused;
    QList<Entry> entries;     ///< of a folder, in no order; hidden ones are left out
    bool isInvented = false;  ///< the system makes the folder up; it holds no files of anybody
  };

  /// A folder to begin from.
  struct Place {
    enum class Kind { Home, Root, Disk, Network };
    Kind kind = Kind::Root;
    QString path;
  };

  virtual ~Folders() = default;

  /// Home, the root, and what is mounted beside them. None of them is touched.
  virtual QList<Place> Places() const = 0;

  /// Looks what lies at the full `path` and reads it if it is a folder. Returns at once; `done` runs from the event
  /// loop. Only the newest call is answered.
  virtual void Read(const QString& path, std::function<void(const Answer&)> done) = 0;
};

}  // namespace talnik
