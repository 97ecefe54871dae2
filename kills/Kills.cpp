#include "Kills.h"

#include "Deeds.h"
#include "Power.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <vector>

namespace talnik::soak {

namespace {

constexpr int kDeedsOfARound = 40;

QString PlaceOfFolders() {
  return QFile::exists(u"/dev/shm"_qs) ? u"/dev/shm/talnik-XXXXXX"_qs : u"talnik-XXXXXX"_qs;
}

/// One letter through the pipe. It is on its way when the call returns, whatever becomes of this process.
void Say(int pipe, char letter) {
  if (::write(pipe, &letter, 1) != 1) ::_exit(1);
}

using Work = void (*)(const QString& folder, quint32 seed, int pipe);

/// A process that does its deeds: 'b' as one begins, 'd' when it is done, 'r' when it was refused.
struct Doer {
  Doer(const QString& folder, quint32 seed, Work work) {
    int ends[2];
    if (::pipe(ends) != 0) std::abort();
    pid = ::fork();
    if (pid == 0) {
      ::close(ends[0]);
      work(folder, seed, ends[1]);
      ::_exit(0);
    }
    ::close(ends[1]);
    pipe = ends[0];
  }
  ~Doer() {
    ::close(pipe);
    ::waitpid(pid, nullptr, 0);
  }
  Doer(const Doer&) = delete;
  Doer& operator=(const Doer&) = delete;

  /// False at the end.
  bool Hear() {
    char letter = 0;
    if (::read(pipe, &letter, 1) != 1) return false;
    heard.push_back(letter);
    return true;
  }

  pid_t pid = 0;
  int pipe = -1;
  std::vector<char> heard;
};

void DoAll(const QString& folder, quint32 seed, int pipe) {
  Deeds deeds(folder, seed);
  for (int number = 0; number < kDeedsOfARound; ++number) {
    Say(pipe, 'b');
    Say(pipe, deeds.Do(number) ? 'd' : 'r');
  }
}

/// The power fails at some change of a file within some deed or the next ones, or behind the last one.
void DoAllUntilPowerFails(const QString& folder, quint32 seed, int pipe) {
  QRandomGenerator random(seed);
  const int fails = random.bounded(kDeedsOfARound);
  WatchDisk(folder);
  Deeds deeds(folder, seed);
  for (int number = 0; number < kDeedsOfARound; ++number) {
    Say(pipe, 'b');
    if (number == fails) FailPowerAfter(static_cast<int>(random.bounded(1U << random.bounded(9U))));
    Say(pipe, deeds.Do(number) ? 'd' : 'r');
  }
  FailPower();
}

/// The disk takes files of some size only, as a full one takes no more; at some deeds.
void DoAllOnAFullDisk(const QString& folder, quint32 seed, int pipe) {
  std::signal(SIGXFSZ, SIG_IGN);
  QRandomGenerator random(seed);
  Deeds deeds(folder, seed);
  for (int number = 0; number < kDeedsOfARound; ++number) {
    rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
    // From files of a few bytes to the whole store.
    if (random.bounded(2) == 0) limit.rlim_cur = random.bounded(1U << random.bounded(18U));
    Say(pipe, 'b');
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const bool done = deeds.Do(number);
    limit.rlim_cur = RLIM_INFINITY;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    Say(pipe, done ? 'd' : 'r');
  }
}

class Round {
 public:
  Round(Tally& tally, quint32 seed) : tally_(tally), seed_(seed) {
    if (!MakeDataFolder(folder_.path())) std::abort();
    ++tally_.rounds;
  }

  void Kill() {
    QRandomGenerator random(seed_);
    std::vector<char> heard;
    {
      Doer doer(folder_.path(), seed_, DoAll);
      for (quint32 letters = random.bounded(2 * kDeedsOfARound); letters > 0; --letters) doer.Hear();
      ::usleep(random.bounded(4000));
      ::kill(doer.pid, SIGKILL);
      while (doer.Hear()) continue;
      heard = doer.heard;
    }
    Compare(heard);
  }

  void CutPower() { Compare(All(DoAllUntilPowerFails)); }

  void Fill() {
    const std::vector<char> heard = All(DoAllOnAFullDisk);
    if (heard.size() != 2 * kDeedsOfARound) Tell(u"the process broke off"_qs);
    Compare(heard);
  }

 private:
  std::vector<char> All(Work work) {
    Doer doer(folder_.path(), seed_, work);
    while (doer.Hear()) continue;
    return doer.heard;
  }

  /// Does again what was confirmed and compares; what was under way may have been done or not.
  void Compare(const std::vector<char>& heard) {
    qint64 leftovers = 0;
    QString why;
    const auto found = Contents(folder_.path(), why, leftovers);
    tally_.leftovers += static_cast<int>(leftovers);
    if (!found) return Tell(why);
    const auto refused = static_cast<int>(std::count(heard.begin(), heard.end(), 'r'));
    const auto confirmed = static_cast<int>(std::count(heard.begin(), heard.end(), 'd'));
    tally_.refused += refused;
    tally_.confirmed += confirmed;
    const QString before = DoneAgain(heard);
    const int number = refused + confirmed;
    const bool underWay = !heard.empty() && heard.back() == 'b';
    if (underWay) ++tally_.underWay;
    if (underWay) ++tally_.hits[Deeds::NameOf(Deeds::KindOf(seed_, number))];
    if (*found == before) return;
    // The word of a deed that was done may not have left any more.
    std::vector<char> all = heard;
    if (underWay) all.back() = 'd';
    const QString after = underWay ? DoneAgain(all) : before;
    if (*found == after) {
      ++tally_.kept;
      return;
    }
    Tell(u"something else stands there: "_qs + QString::fromLatin1(Deeds::NameOf(Deeds::KindOf(seed_, number))));
    TellDifference(before, *found);
    TellDifference(after, *found);
  }

  /// What stands in a new folder behind the deeds that were done. To look into a folder mends it, as each start does,
  /// so no deed follows there.
  QString DoneAgain(const std::vector<char>& heard) const {
    const QTemporaryDir folder{PlaceOfFolders()};
    if (!MakeDataFolder(folder.path())) std::abort();
    {
      Deeds deeds(folder.path(), seed_);
      int number = 0;
      for (const char letter : heard) {
        if (letter == 'b') continue;
        if (letter == 'd' && !deeds.Do(number)) return u"a deed cannot be done again"_qs;
        ++number;
      }
    }
    qint64 leftovers = 0;
    QString why;
    return Contents(folder.path(), why, leftovers).value_or(why);
  }

  static void TellDifference(const QString& expected, const QString& found) {
    const QStringList lines = expected.split(u'\n');
    const QStringList others = found.split(u'\n');
    qsizetype line = 0;
    while (line < std::min(lines.size(), others.size()) && lines[line] == others[line]) ++line;
    std::fprintf(stderr, "  line %lld of %lld and %lld\n  %s\n  %s\n", static_cast<long long>(line),
                 static_cast<long long>(lines.size()), static_cast<long long>(others.size()),
                 qPrintable(lines.value(line)), qPrintable(others.value(line)));
  }

  void Tell(const QString& what) {
    std::fprintf(stderr, "seed %u: %s\n", seed_, qPrintable(what));
    ++tally_.broken;
  }

  Tally& tally_;
  quint32 seed_;
  QTemporaryDir folder_{PlaceOfFolders()};
};

Tally Rounds(int rounds, quint32 seed, void (Round::*kind)()) {
  Tally tally;
  for (int round = 0; round < rounds; ++round) (Round(tally, seed + static_cast<quint32>(round)).*kind)();
  return tally;
}

}  // namespace

Tally Kills(int rounds, quint32 seed) {
  return Rounds(rounds, seed, &Round::Kill);
}

Tally PowerCuts(int rounds, quint32 seed) {
  return Rounds(rounds, seed, &Round::CutPower);
}

Tally FullDisks(int rounds, quint32 seed) {
  return Rounds(rounds, seed, &Round::Fill);
}

}  // namespace talnik::soak
