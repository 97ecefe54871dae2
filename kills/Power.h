#pragma once

#include <QString>

namespace talnik::soak {

/// Keeps account of what this process writes and has not yet brought to the disk.
void WatchDisk(const QString& folder);

/// The power fails before that many further changes of files, or by half of the next one.
void FailPowerAfter(int changes);

/// It fails now: the process ends, and the files of the folder are as they were last brought to the disk.
[[noreturn]] void FailPower();

}  // namespace talnik::soak
