#pragma once

#include "menus/FolderList.h"
#include "platform/Folders.h"

#include <QObject>

#include <deque>
#include <functional>

namespace talnik {

/// Looks for files and folders by a part of their name, in a folder and below, the nearest first. One folder is read at
/// a time, from the event loop, so keys and speech go on.
class FolderSearch : public QObject {
  Q_OBJECT

 public:
  explicit FolderSearch(Folders& folders) : folders_(folders) {}

  /// Looks for what holds `text` in its name, or fits it when it is a mask; of the files only those of the filter.
  void Start(const QString& folder, const QString& text, const NameFilter& filter);
  void Stop();
  bool IsRunning() const { return running_; }

  /// Runs when everything has been looked through, or when there is too much of it.
  std::function<void()> Ended;

  QList<Folders::Entry> Found;  ///< their names are paths from the folder on
  QString At;                   ///< the folder that is being looked through
  int Unread = 0;               ///< folders that could not be read

 private:
  void Next();
  void Look(const Folders::Answer& answer);
  bool IsWanted(const Folders::Entry& entry) const;

  Folders& folders_;
  QString folder_;
  QString text_;
  NameFilter filter_;
  std::function<bool(const QString& name)> fits_;
  std::deque<QString> waiting_;  ///< paths from the folder on
  bool running_ = false;
};

}  // namespace talnik
