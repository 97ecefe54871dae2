#pragma once

#include <QString>

namespace talnik {

/// Makes a store without rows, for this user alone. False, with nothing left behind, when there is a file already or
/// it could not be written.
bool CreateStore(const QString& path);

}  // namespace talnik
