#pragma once

#include "dates/Date.h"
#include "shell/FormServices.h"

#include <functional>

namespace talnik {

/// Sets the machine's clock to a local moment and tells the user when the system refuses. `afterwards` runs when that
/// is over, from the event loop.
void SetSystemClock(FormServices& services, const Date& moment, std::function<void()> afterwards);

}  // namespace talnik
