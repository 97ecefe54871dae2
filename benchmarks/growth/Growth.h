#pragma once

#include "../Promises.h"

#include <QString>

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace talnik::bench {

/// How a cost may grow with the rows: as they do, or hardly at all where only what is asked for is looked at.
enum class Grows { WithRows, Hardly };

struct Subject {
  const char* what;
  Grows grows;
  double promisedMs;  ///< at 10,000 rows
  std::function<double(int rows)> milliseconds;
  int mostRows = 1'000'000;  ///< more would take minutes
};

/// Measures subjects at growing numbers of rows and prints, a line each, the times and their exponents: the slope of
/// the time over the rows on a log-log scale, 1 where ten times the rows take ten times the time. A subject that breaks
/// a promise is measured again, twice at most, and its shortest times count.
class GrowthTable {
 public:
  /// `leave`: how many times the promised milliseconds may be taken; `leaveExponent` is added to the exponents. Only
  /// subjects that hold `only` in their names are measured.
  GrowthTable(std::vector<int> sizes, double leave, double leaveExponent, std::string only)
      : sizes_(std::move(sizes)), leave_(leave), leaveExponent_(leaveExponent), only_(std::move(only)) {
    std::printf("%-46s", "milliseconds at rows");
    for (const int rows : sizes_) std::printf("%11d", rows);
    std::printf("%8s%8s\n", "last", "all");
  }

  void Measure(const Subject& subject) {
    if (std::string(subject.what).find(only_) == std::string::npos) return;
    Line line;
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts && !IsKept(subject, line); ++attempt) MeasureOnce(subject, line);
    Print(subject, line);
  }

  int ExitCode() const { return promises_.ExitCode(); }

 private:
  static constexpr int kPromisedRows = 10'000;

  struct Line {
    std::vector<double> times;
    double last = std::numeric_limits<double>::infinity();  ///< the exponent between the last two sizes
    double all = std::numeric_limits<double>::infinity();   ///< and between the first and the last
    double promised = 0;                                    ///< the time for which there is a promise
  };

  double MostMs(const Subject& subject) const { return subject.promisedMs * leave_; }
  /// Over all sizes n log n is promised. Between two of them what is read may come to be more than the caches hold,
  /// which makes every row dearer once.
  double MostOverAll(const Subject& subject) const {
    return (subject.grows == Grows::WithRows ? 1.2 : 0.3) + leaveExponent_;
  }
  double MostAtLast(const Subject& subject) const {
    return (subject.grows == Grows::WithRows ? 1.4 : 0.3) + leaveExponent_;
  }
  bool IsKept(const Subject& subject, const Line& line) const {
    return line.last < MostAtLast(subject) && line.all < MostOverAll(subject) && line.promised < MostMs(subject);
  }

  double Exponent(const std::vector<double>& times, std::size_t from, std::size_t to) const {
    return std::log(times[to] / times[from]) / std::log(static_cast<double>(sizes_[to]) / sizes_[from]);
  }

  void MeasureOnce(const Subject& subject, Line& line) const {
    for (std::size_t i = 0; i < sizes_.size() && sizes_[i] <= subject.mostRows; ++i) {
      const double time = subject.milliseconds(sizes_[i]);
      if (i == line.times.size()) line.times.push_back(time);
      line.times[i] = std::min(line.times[i], time);
      if (sizes_[i] == kPromisedRows) line.promised = line.times[i];
    }
    const std::size_t end = line.times.size() - 1;
    line.last = Exponent(line.times, end - 1, end);
    line.all = Exponent(line.times, 0, end);
  }

  void Print(const Subject& subject, const Line& line) {
    std::printf("%-46s", subject.what);
    for (std::size_t i = 0; i < sizes_.size(); ++i) {
      if (i < line.times.size()) {
        std::printf("%11.3f", line.times[i]);
      } else {
        std::printf("%11s", "");
      }
    }
    const bool kept = IsKept(subject, line);
    std::printf("%8.2f%8.2f   promised below %.1f, %.1f, %g ms at 10,000%s\n", line.last, line.all, MostAtLast(subject),
                MostOverAll(subject), MostMs(subject), kept ? "" : "  NOT KEPT");
    promises_.Record(
        QStringLiteral("growth: %1").arg(QLatin1String(subject.what)),
        QStringLiteral("%1, %2, %3 ms")
            .arg(line.last, 0, 'f', 2)
            .arg(line.all, 0, 'f', 2)
            .arg(line.promised, 0, 'f', 2),
        QStringLiteral("below %1, %2, %3 ms").arg(MostAtLast(subject)).arg(MostOverAll(subject)).arg(MostMs(subject)),
        kept);
    std::fflush(stdout);
  }

  std::vector<int> sizes_;
  double leave_;
  double leaveExponent_;
  std::string only_;
  Promises promises_;
};

}  // namespace talnik::bench
