#include "platform/linux/FolderReader.h"

#include "platform/linux/MountPoints.h"
#include "platform/linux/UserFolders.h"
#include "platform/linux/Worker.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <cerrno>
#include <chrono>
#include <mutex>
#include <utility>

namespace talnik {

namespace {

using Outcome = Folders::Outcome;
using FolderStream = std::unique_ptr<DIR, int (*)(DIR*)>;

/// A willing disk may have to wake up, a willing network to be dialled.
constexpr std::chrono::seconds ReadingPatience(10);
/// So many calls may hang in the system; with more of them nothing is asked any longer.
constexpr int MostAlive = 8;

bool IsGone(int error) {
  return error == ENOENT || error == ENOTDIR;
}

bool IsFolder(const QByteArray& path) {
  struct stat info {};
  return ::stat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

/// What lies at a path that is no readable folder.
Outcome OutcomeOfOther(const QByteArray& path) {
  struct stat info {};
  if (::stat(path.constData(), &info) == 0) return S_ISREG(info.st_mode) ? Outcome::File : Outcome::Refused;
  if (!IsGone(errno)) return Outcome::Refused;
  const QByteArray around = path.left(path.lastIndexOf('/') + 1);
  return IsFolder(around.isEmpty() ? QByteArray(".") : around) ? Outcome::Missing : Outcome::NoFolder;
}

/// Whether it is a file or a folder, which the folder itself tells of most names; the others are asked for. False for
/// what is neither.
bool Classify(int folder, const dirent& line, Folders::Entry& entry) {
  entry.isFolder = line.d_type == DT_DIR;
  entry.isLink = line.d_type == DT_LNK;
  if (line.d_type == DT_REG || line.d_type == DT_DIR) return true;
  if (line.d_type != DT_LNK && line.d_type != DT_UNKNOWN) return false;
  struct stat info {};
  if (line.d_type == DT_UNKNOWN && ::fstatat(folder, line.d_name, &info, AT_SYMLINK_NOFOLLOW) == 0) {
    entry.isLink = S_ISLNK(info.st_mode);
  }
  if (::fstatat(folder, line.d_name, &info, 0) != 0) return false;
  entry.isFolder = S_ISDIR(info.st_mode);
  return entry.isFolder || S_ISREG(info.st_mode);
}

bool IsInvented(int folder) {
  struct statfs info {};
  if (::fstatfs(folder, &info) != 0) return false;
  return info.f_type == PROC_SUPER_MAGIC || info.f_type == SYSFS_MAGIC;
}

}  // namespace

Folders::Answer ReadFolder(const QString& path) {
  Folders::Answer answer;
  const QByteArray bytes = QFile::encodeName(path);
  if (bytes.isEmpty() || bytes.contains('\0')) return answer;
  const FolderStream stream(::opendir(bytes.constData()), ::closedir);
  if (!stream) {
    answer.outcome = OutcomeOfOther(bytes);
    return answer;
  }
  const int folder = ::dirfd(stream.get());
  answer.outcome = Outcome::Folder;
  answer.isInvented = IsInvented(folder);
  while (const dirent* line = ::readdir(stream.get())) {
    if (line->d_name[0] == '.') continue;
    Folders::Entry entry;
    if (!Classify(folder, *line, entry)) continue;
    entry.name = QFile::decodeName(line->d_name);
    answer.entries << std::move(entry);
  }
  return answer;
}

struct FolderReader::Reading {
  std::mutex mutex;
  FolderReader* asker = nullptr;  ///< empty when nobody waits any more
};

FolderReader::FolderReader(System system)
    : system_(std::move(system)), alive_(std::make_shared<std::atomic<int>>(0)), patience_(this) {
  patience_.setSingleShot(true);
  patience_.setInterval(ReadingPatience);
  connect(&patience_, &QTimer::timeout, this, [this] { OnAnswer(reading_, Answer{Outcome::NoAnswer, {}, false}); });
}

FolderReader::~FolderReader() {
  if (!reading_) return;
  const std::scoped_lock lock(reading_->mutex);
  reading_->asker = nullptr;
}

QList<Folders::Place> FolderReader::Places() const {
  QList<Place> places;
  if (const QString home = HomeFolder(); !home.isEmpty()) places << Place{Place::Kind::Home, home};
  places << Place{Place::Kind::Root, u"/"_qs};
  QFile table(u"/proc/self/mountinfo"_qs);
  if (table.open(QIODevice::ReadOnly)) places << MountPoints(table.readAll());
  return places;
}

void FolderReader::Read(const QString& path, std::function<void(const Answer&)> done) {
  Leave();
  reading_ = std::make_shared<Reading>();
  reading_->asker = this;
  done_ = std::move(done);
  patience_.start();
  if (*alive_ >= MostAlive) return patience_.start(0);
  ++*alive_;
  worker_ = std::make_unique<Worker>([path, system = system_, reading = reading_, alive = alive_] {
    const Answer answer = system(path);
    --*alive;
    const std::scoped_lock lock(reading->mutex);
    FolderReader* asker = reading->asker;
    if (!asker) return;
    QMetaObject::invokeMethod(
        asker, [asker, reading, answer] { asker->OnAnswer(reading, answer); }, Qt::QueuedConnection);
  });
}

/// Nobody waits for the reading that is under way.
void FolderReader::Leave() {
  patience_.stop();
  patience_.setInterval(ReadingPatience);
  if (const auto left = std::exchange(reading_, nullptr)) {
    const std::scoped_lock lock(left->mutex);
    left->asker = nullptr;
  }
  if (worker_) worker_->Leave();
  worker_.reset();
}

void FolderReader::OnAnswer(const std::shared_ptr<Reading>& reading, const Answer& answer) {
  if (!reading || reading != reading_) return;
  Leave();
  if (const auto done = std::exchange(done_, nullptr)) done(answer);
}

}  // namespace talnik
