#pragma once

#include "recurrence/RuleText.h"

#include <optional>
#include <vector>

namespace talnik {

/// From where and when a rule is walked.
struct WalkStart {
  Date start = {};
  Date now = {};                       ///< dates before it are passed over and not counted; exactly now is not past
  bool addFirst = true;                ///< whether the start itself may be one of the dates
  std::optional<Date> spawnTime = {};  ///< an endless series goes on from here instead of from its start
};

struct WalkResult {
  Date start = {};          ///< where the walk began
  bool first = false;       ///< the start itself is one of the dates
  std::vector<Date> dates;  ///< the other ones, in the order of the walk
};

/// The dates that a rule yields. An endless rule ends two years after the start (or after the spawn time); every walk
/// ends at the largest date there is. The dates that were passed over go to `past`, when it is given.
WalkResult WalkRule(const RuleText& rule, const WalkStart& from, std::vector<Date>* past = nullptr);

}  // namespace talnik
