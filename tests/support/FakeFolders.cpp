#include "support/FakeFolders.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace talnik::test {

namespace {

QString AroundOf(const QString& path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  return slash <= 0 ? u"/"_qs : path.left(slash);
}

QString NameOf(const QString& path) {
  return path.mid(path.lastIndexOf(u'/') + 1);
}

auto Named(const QString& name) {
  return [name](const Folders::Entry& entry) { return entry.name == name; };
}

}  // namespace

void FakeFolders::Add(const QString& path) {
  if (path == u"/"_qs) return;
  const bool isFolder = path.endsWith(u'/');
  const QString whole = isFolder ? path.chopped(1) : path;
  const QString around = AroundOf(whole);
  if (!folders_.count(around)) Add(around + u'/');
  QList<Entry>& entries = folders_[around];
  if (std::none_of(entries.begin(), entries.end(), Named(NameOf(whole))))
    entries << Entry{NameOf(whole), isFolder, false};
  if (isFolder) folders_[whole];
}

void FakeFolders::AddLink(const QString& path) {
  Add(path + u'/');
  folders_[AroundOf(path)].last().isLink = true;
}

void FakeFolders::Remove(const QString& path) {
  folders_[AroundOf(path)].removeIf(Named(NameOf(path)));
  folders_.erase(path);
}

Folders::Answer FakeFolders::AnswerFor(const QString& path) const {
  if (Refuses.contains(path)) return {Outcome::Refused, {}, false};
  if (const auto found = folders_.find(path); found != folders_.end()) {
    return {Outcome::Folder, found->second, Invented.contains(path)};
  }
  const auto around = folders_.find(AroundOf(path));
  if (around == folders_.end()) return {Outcome::NoFolder, {}, false};
  const bool there = std::any_of(around->second.begin(), around->second.end(), Named(NameOf(path)));
  return {there ? Outcome::File : Outcome::Missing, {}, false};
}

void FakeFolders::Read(const QString& path, std::function<void(const Folders::Answer&)> done) {
  WasRead << path;
  done_ = [this, path, done](const Folders::Answer& answer) {
    done(answer.outcome == Outcome::Folder ? AnswerFor(path) : answer);
  };
  if (Hold) return;
  const int number = static_cast<int>(WasRead.size());
  QTimer::singleShot(0, &alive_, [this, number] {
    if (!Hold && number == WasRead.size()) Reply(Outcome::Folder);
  });
}

void FakeFolders::Reply(Outcome outcome) {
  if (const auto done = std::exchange(done_, nullptr)) done({outcome, {}, false});
}

}  // namespace talnik::test
