#include "Fuzz.h"
#include "sync/GoogleLine.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString field = fuzz::Text(data, size);
  QString start;
  QString end;
  const QString rule = ParseGoogleRule(field, start, end);
  constexpr qsizetype mostPerWord = 6;
  fuzz::Require(rule.size() <= (field.size() + 2) * (mostPerWord + 1) + start.size() + end.size(),
                "a rule is made of the words of its field");
  fuzz::Require(start.isEmpty() || field.contains(u"DTSTART"), "a start comes from DTSTART");
  return 0;
}
