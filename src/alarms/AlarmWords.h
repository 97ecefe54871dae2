#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// How far an event lies from now: "Za 2 dny 1 hodinu 3 minuty ", "Před 1 minutou "; empty within the minute. A year
/// has 365 days.
QString EventDistance(const Date& event, const Date& now);

}  // namespace talnik
