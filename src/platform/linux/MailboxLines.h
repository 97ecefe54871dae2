#pragma once

#include <QString>

#include <functional>

class QIODevice;

namespace talnik {

/// No line is longer.
inline constexpr qint64 LongestMailboxLine = 64 * 1024;

/// What is to become of a writer after what it has written has been looked at.
enum class Writer { MayWriteOn, HasMore, WritesTooMuch };

/// Hands the whole lines that have come from a writer to `take`, without their ends, a number of them at once. `take`
/// returns false when the writer is gone. A line that has not ended waits.
Writer TakeLines(QIODevice& from, const std::function<bool(const QString& text)>& take);

}  // namespace talnik
