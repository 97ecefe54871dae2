#include "dates/Easter.h"

namespace talnik {

Date EasterDate(const QString& yearText) {
  bool isNumber = false;
  const int year = yearText.trimmed().toInt(&isNumber);
  if (!isNumber || year < 1 || year > 9999) return Date();

  const int a = year % 19;
  const int b = year % 4;
  const int c = year % 7;
  const int d = (19 * a + 24) % 30;
  const int e = (2 * b + 4 * c + 6 * d + 5) % 7;
  int day = d + e - 9;
  int month = 4;
  if (day == 25 && d == 28 && e == 6 && a > 10) {
    day = 18;
  } else if (day > 25) {
    day -= 7;
  } else if (day < 1) {
    day = 22 + d + e;
    month = 3;
  }
  // The rule gives the Sunday; the holiday is the Monday after it.
  ++day;
  if (day > 31) {
    day = 1;
    ++month;
  }
  return Date::FromParts(year, month, day).value_or(Date());
}

}  // namespace talnik
