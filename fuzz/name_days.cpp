#include "Fuzz.h"
#include "calendar/NameDays.h"
#include "platform/linux/LocaleCodePage.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::File file;
  static const LocaleCodePage codePage("UTF-8");
  file.Write(fuzz::Bytes(data, size));
  NameDays names;
  if (!names.LoadNames(file.Path(), codePage)) return 0;
  names.SetNameOfDay(1, 1, names.NameOfDay(12, 31) + u"\r\nAdam"_qs);
  NameSearch search;
  search.SearchText = u"a"_qs;
  int hits = 0;
  while (search.Next(names) == NameSearch::Outcome::Found) {
    fuzz::Require(++hits <= NameDays::SlotCount, "a search comes to an end");
    fuzz::Require(!NameDays::DayFromLine(search.LastHit()).isEmpty(), "every hit is a day");
  }
  fuzz::Require(names.SaveNames(file.Path(), codePage), "names can be saved");
  NameDays again;
  again.LoadNames(file.Path(), codePage);
  for (int month = 1; month <= 12; ++month) {
    for (int day = 1; day <= 31; ++day) {
      fuzz::Require(again.NameOfDay(month, day) == names.NameOfDay(month, day), "names that were saved are read");
    }
  }
  return 0;
}
