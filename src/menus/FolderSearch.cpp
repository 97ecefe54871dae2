#include "menus/FolderSearch.h"

#include <QPointer>

namespace talnik {

namespace {

/// More than anybody listens to.
constexpr qsizetype MostFound = 10'000;

}  // namespace

void FolderSearch::Start(const QString& folder, const QString& text, const NameFilter& filter) {
  folder_ = folder;
  filter_ = filter;
  const bool isMask = text.contains(u'*') || text.contains(u'?');
  fits_ = [text, isMask, mask = NameFilter(text)](const QString& name) {
    return isMask ? mask.Matches(name) : HoldsText(name, text);
  };
  Found.clear();
  Unread = 0;
  waiting_ = {QString()};
  running_ = true;
  Next();
}

void FolderSearch::Stop() {
  running_ = false;
  waiting_.clear();
}

void FolderSearch::Next() {
  if (waiting_.empty() || Found.size() >= MostFound) {
    Stop();
    if (Ended) Ended();
    return;
  }
  At = waiting_.front();
  waiting_.pop_front();
  const QPointer<FolderSearch> alive(this);
  folders_.Read(At.isEmpty() ? folder_ : PathIn(folder_, At), [alive](const Folders::Answer& answer) {
    if (alive && alive->running_) alive->Look(answer);
  });
}

bool FolderSearch::IsWanted(const Folders::Entry& entry) const {
  return fits_(entry.name) && (entry.isFolder || filter_.Matches(entry.name));
}

void FolderSearch::Look(const Folders::Answer& answer) {
  if (answer.outcome != Folders::Outcome::Folder) ++Unread;
  const QList<Folders::Entry> entries = answer.isInvented ? QList<Folders::Entry>() : answer.entries;
  for (Folders::Entry entry : entries) {
    const bool wanted = IsWanted(entry);
    if (!At.isEmpty()) entry.name = PathIn(At, entry.name);
    // A link may lead back up, and round for ever.
    if (entry.isFolder && !entry.isLink) waiting_.push_back(entry.name);
    if (wanted && Found.size() < MostFound) Found << std::move(entry);
  }
  Next();
}

}  // namespace talnik
