#include "Fuzz.h"
#include "recurrence/RuleText.h"
#include "recurrence/RuleWalk.h"

#include <algorithm>

using namespace talnik;

namespace {

/// No walk goes on behind the last year there is, so one that begins close to it is short whatever the rule says.
Date StartOf(const std::uint8_t* bytes) {
  const auto start =
      Date::FromParts(9997 + bytes[0] % 3, 1 + bytes[1] % 12, 1 + bytes[2] % 28, bytes[3] % 24, bytes[3] % 60);
  return start.value();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t head = 5;
  if (size < head) return 0;
  const QString text = fuzz::Text(data + head, size - head);
  const RuleText rule = RuleText::Read(text);
  const RuleText again = RuleText::Read(rule.Write());
  // A year is written plainly, and a stamp with one of three digits reads as none.
  const bool stampIsRead = !rule.until || rule.until->Year() >= 1000;
  fuzz::Require(!stampIsRead || RuleText::Read(again.Write()) == again,
                "a rule that was written reads as it was written");
  SameRule(text, rule.Write());

  const Date start = StartOf(data);
  const Date now = DateAdd(DateUnit::Day, data[4], *Date::FromParts(9998, 1, 1)).value();
  std::vector<Date> past;
  const WalkResult walk = WalkRule(rule, {.start = start, .now = now}, &past);
  const std::size_t most = static_cast<std::size_t>(std::max<std::int64_t>(rule.count, 1));
  fuzz::Require(!rule.EndsByCount() || walk.dates.size() < most, "no walk yields more than its count");
  fuzz::Require(std::is_sorted(walk.dates.begin(), walk.dates.end()), "a walk never goes back");
  // Without an interval the search for a weekday of the month begins in the month of the start, in front of it.
  const bool fromStart = rule.interval > 0;
  for (const Date& date : walk.dates) {
    fuzz::Require(date >= now && (date > start || !fromStart), "a walk yields what is to come");
  }
  for (const Date& date : past) fuzz::Require(date < now, "only what has passed is passed over");
  return 0;
}
