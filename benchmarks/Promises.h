#pragma once

#include <QFile>
#include <QStringList>

#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace talnik::bench {

using Work = std::function<void()>;

inline double MillisecondsOf(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// The median time of one run of `work` in milliseconds; `prepare` is not timed.
inline double MedianOf(
    int runs, const Work& work, const Work& prepare = [] {}) {
  std::vector<double> times;
  for (int run = 0; run < runs; ++run) {
    prepare();
    times.push_back(MillisecondsOf(work));
  }
  return Median(times);
}

/// The shortest time of one run of `work` in milliseconds, of as many runs as fit into a moment; `prepare` is not
/// timed.
inline double ShortestOf(
    const Work& work, const Work& prepare = [] {}) {
  constexpr double momentMs = 300;
  constexpr double patienceMs = 4000;
  constexpr int fewest = 3;
  constexpr int most = 50;
  double shortest = 1e9;
  double sum = 0;
  for (int run = 0; run < most && sum < patienceMs && (run < fewest || sum < momentMs); ++run) {
    prepare();
    const double time = MillisecondsOf(work);
    shortest = std::min(shortest, time);
    sum += time;
  }
  return shortest;
}

/// Lets the process keep what it has freed: a machine that lends memory anew at every run, page by page, would be
/// measured for that.
inline void KeepMemory() {
  constexpr int all = 1 << 30;
  constexpr int largest = 32 << 20;
  mallopt(M_TRIM_THRESHOLD, all);
  mallopt(M_MMAP_THRESHOLD, largest);
}

/// Prints a line for each thing measured and remembers whether all promises were kept. What was promised also goes, a
/// line of tabs each, to the file that TALNIK_RESULTS names.
class Promises {
 public:
  /// A figure without a promise.
  void Tell(const char* what, double value, const char* unit) { std::printf("%-68s %9.2f %s\n", what, value, unit); }
  void Below(const char* what, double value, double promised, const char* unit) {
    Say(what, value, unit, "below", promised, value < promised);
  }
  void Above(const char* what, double value, double promised, const char* unit) {
    Say(what, value, unit, "above", promised, value > promised);
  }
  /// For what is printed elsewhere.
  void Record(const QString& what, const QString& measured, const QString& promised, bool kept) {
    kept_ = kept_ && kept;
    QFile results(qEnvironmentVariable("TALNIK_RESULTS"));
    if (results.fileName().isEmpty() || !results.open(QIODevice::Append)) return;
    const QStringList cells = {what.trimmed(), measured, promised, QLatin1String(kept ? "kept" : "NOT KEPT")};
    results.write(cells.join(u'\t').toUtf8() + '\n');
  }
  /// For main().
  int ExitCode() const { return kept_ ? 0 : 1; }

 private:
  void Say(const char* what, double value, const char* unit, const char* side, double promised, bool kept) {
    std::printf("%-68s %9.2f %s   promised %s %g%s\n", what, value, unit, side, promised, kept ? "" : "  NOT KEPT");
    Record(QString::fromUtf8(what), QStringLiteral("%1 %2").arg(value, 0, 'f', 2).arg(QLatin1String(unit)),
           QStringLiteral("%1 %2").arg(QLatin1String(side)).arg(promised), kept);
  }

  bool kept_ = true;
};

}  // namespace talnik::bench
