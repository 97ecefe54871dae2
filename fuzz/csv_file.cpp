#include "Stores.h"
#include "store/CsvExchange.h"

using namespace talnik;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::FuzzStore stores;
  Store& store = stores.Empty();
  const Date today = *Date::FromParts(2024, 2, 29);
  const CsvProgress goOn = [](qint64 done, qint64 total) {
    fuzz::Require(done <= total, "no more is done than there is");
    return true;
  };
  const CsvImport first = ImportCsv(store, fuzz::Text(data, size), today, goOn);
  fuzz::Require(first.end == CsvEnd::Done && first.imported == stores.Count(u"1"_qs), "what was counted is there");
  const CsvExport written = ExportCsv(store, goOn);
  fuzz::Require(written.end == CsvEnd::Done && written.rows == first.imported, "all of it is written");
  const CsvImport again = ImportCsv(store, written.text, today, goOn);
  fuzz::Require(again.end == CsvEnd::Done && again.imported == 0 && again.rejected == written.rows,
                "what is there already is not taken twice");
  return 0;
}
