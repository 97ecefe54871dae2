#include "Fuzz.h"
#include "dates/Date.h"
#include "dates/UtcStamp.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text = fuzz::Text(data, size);
  const Date today = *Date::FromParts(2024, 2, 29);
  const auto date = CDate(text, today);
  fuzz::Require(date.has_value() == IsDate(text, today), "a date is what can be read as one");
  if (date)
    fuzz::Require(CDate(DateText(*date), today) == date, "a date that was read is written so that it reads alike");
  const ZoneBiases biases{-60, 0, -60, true};
  ToUtcStamp(text, biases, today);
  CDate(FromUtcStamp(text, biases), today);
  return 0;
}
