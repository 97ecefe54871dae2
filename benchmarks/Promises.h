#pragma once

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

/// Prints a line for each thing measured and remembers whether all promises were kept.
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
  /// For main().
  int ExitCode() const { return kept_ ? 0 : 1; }

 private:
  void Say(const char* what, double value, const char* unit, const char* side, double promised, bool kept) {
    std::printf("%-68s %9.2f %s   promised %s %g%s\n", what, value, unit, side, promised, kept ? "" : "  NOT KEPT");
    kept_ = kept_ && kept;
  }

  bool kept_ = true;
};

}  // namespace talnik::bench
