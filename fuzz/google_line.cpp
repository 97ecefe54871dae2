#include "Fuzz.h"
#include "sync/GoogleLine.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const GoogleLine line = ReadGoogleLine(fuzz::Text(data, size), {-60, 0, -60, false}, *Date::FromParts(2024, 2, 29));
  fuzz::Require(line.title.size() <= AppointmentSize && line.id.size() <= GuidSize, "a line fits its columns");
  fuzz::Require(line.status != StatusOccurrence, "no line is spawned");
  fuzz::Require(line.status == StatusSingle || line.status == StatusDeleted || !line.rule.isEmpty(),
                "only a rule makes a series");
  return 0;
}
