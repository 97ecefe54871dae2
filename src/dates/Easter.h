#pragma once

#include "dates/Date.h"

namespace talnik {

/// Easter Monday by Gauss's rule with the constants of the years 1900 to 2099, as the text "d.m.yyyy". A year text
/// that is no number leaves serial 0.
Date EasterDate(const QString& yearText);

}  // namespace talnik
