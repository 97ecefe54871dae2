#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <vector>

// What each engine of recurrence rules is given, in its own program: the same rules from the same start, which is one
// of their dates. Each program prints a line "NAME DATES MILLION-DATES-A-SECOND" for each rule.

namespace peers {

struct Rule {
  const char* name;
  const char* text;
};

inline constexpr const char* kStart = "20240101T090000";
inline constexpr std::array<Rule, 3> kRules = {
    {{"daily", "FREQ=DAILY;INTERVAL=1;UNTIL=20251231T085959"},
     {"weekly", "FREQ=WEEKLY;BYDAY=MO,WE,FR;INTERVAL=1;UNTIL=20251231T085959"},
     {"monthly", "FREQ=MONTHLY;BYDAY=1MO;INTERVAL=1;UNTIL=20251231T085959"}}};

/// `walk` reads a rule, goes over its dates and gives their number.
template <class Walk>
void MeasureRules(const Walk& walk) {
  constexpr int runs = 5;
  constexpr int walks = 100;
  for (const Rule& rule : kRules) {
    std::size_t dates = 0;
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
      const auto start = std::chrono::steady_clock::now();
      for (int i = 0; i < walks; ++i) dates = walk(rule.text);
      times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + runs / 2, times.end());
    std::printf("%s %zu %.3f\n", rule.name, dates, static_cast<double>(dates) * walks / times[runs / 2]);
  }
}

}  // namespace peers
