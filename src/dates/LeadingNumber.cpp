#include "dates/LeadingNumber.h"

namespace talnik {

std::int64_t LeadingDigits(QStringView text, std::int64_t most) {
  std::int64_t number = 0;
  for (const QChar c : text) {
    if (c < u'0' || c > u'9') break;
    const int digit = c.unicode() - u'0';
    if (number > (most - digit) / 10) return most;
    number = number * 10 + digit;
  }
  return number;
}

std::int64_t LeadingNumber(QStringView text, std::int64_t most) {
  if (text.startsWith(u'-')) return -LeadingDigits(text.sliced(1), most);
  return LeadingDigits(text.startsWith(u'+') ? text.sliced(1) : text, most);
}

}  // namespace talnik
