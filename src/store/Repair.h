#pragma once

#include "store/Store.h"

namespace talnik {

/// Brings a store of any older version up to date and fills the gaps of old rows: missing columns are added, rows
/// without guid get a fresh one, without appdur their start, without status StatusSingle. False when the store cannot
/// be read or written or has no table `schedule`.
bool RepairSchedule(Store& store);

}  // namespace talnik
