#pragma once

#include <QStringView>

#include <cstdint>

namespace talnik {

/// The number of the digits that a text begins with; 0 without any. A larger one than `most` is `most`.
std::int64_t LeadingDigits(QStringView text, std::int64_t most);

/// The same with a sign in front; `most` holds on both sides of 0.
std::int64_t LeadingNumber(QStringView text, std::int64_t most);

}  // namespace talnik
