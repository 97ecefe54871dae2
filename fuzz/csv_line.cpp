#include "Fuzz.h"
#include "store/CsvText.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text = fuzz::Text(data, size);
  const Date today = *Date::FromParts(2024, 2, 29);
  CsvLines lines(text);
  qsizetype before = -1;
  while (!lines.AtEnd()) {
    fuzz::Require(lines.Position() > before, "every line leads on");
    before = lines.Position();
    const QStringView line = lines.Next();
    const auto row = CsvRecord(line, today);
    if (!row) continue;
    fuzz::Require(!row->appointment.contains(u';') && row->recur.isEmpty(), "a row holds no fields of other files");
    QString written;
    fuzz::Require(AddCsvLine(written, *row) && IsCsvRow(written), "a row that was read can be written");
    const auto again = CsvRecord(written, today);
    fuzz::Require(again && again->apptime == row->apptime && again->appdur == row->appdur,
                  "a row that was written has its moments");
  }
  return 0;
}
