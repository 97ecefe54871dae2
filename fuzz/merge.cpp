#include "Stores.h"
#include "recurrence/RecurrPopulate.h"
#include "sync/ExchangeFile.h"
#include "sync/GoogleMerge.h"

using namespace talnik;

namespace {

/// Close to the end of all dates, where no rule can yield very many.
const Date& Today() {
  static const Date today = *Date::FromParts(9999, 12, 1);
  return today;
}

bool Apply(GoogleMerge& merge, Store& store, const QString& text) {
  ExchangeLines lines(text);
  while (!lines.AtEnd()) merge.ImportDataGoogle(lines.Next().toString());
  return merge.LinesTaken() && (!merge.RebuildFlag() || RebuildOccurrences(store, merge.ForRebuild())) &&
         merge.DeleteMissingEvents();
}

SyncTally Merge(Store& store, const QString& text) {
  SyncTally tally;
  fuzz::Require(store.InTransaction([&] {
    GoogleMerge merge(store, {-60, 0, -60, false}, Today());
    const bool applied = Apply(merge, store, text);
    tally = merge.Tally();
    return applied;
  }),
                "no line stops a merge");
  return tally;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::FuzzStore stores;
  Store& store = stores.Empty();
  const QString text = fuzz::Text(data, size);
  Merge(store, text);
  qint64 lines = 0;
  const auto exported = ExportDataForGoogle(store, lines);
  fuzz::Require(exported.has_value(), "what was merged can be told to the agent");
  fuzz::Require(exported->count(u"\r\n"_qs) == lines, "every row is one line");
  fuzz::Require(lines == stores.Count(u"status IS NULL OR status<>1"_qs) || exported->contains(u';'),
                "no row is left out");
  Merge(store, text);
  fuzz::Require(stores.Count(u"guid IS NULL"_qs) == 0, "every row keeps an identity");
  return 0;
}
