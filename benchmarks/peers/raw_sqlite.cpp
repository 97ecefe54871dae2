// The store beside SQLite alone over the same file with the same indexes: 100,000 rows written in one transaction, and
// all of them read. Prints a line "NAME OURS RAW" for each, in thousands of rows a second.

#include "../Promises.h"
#include "../RawRows.h"
#include "../TenYears.h"
#include "store/Statements.h"

#include <QTemporaryDir>

#include <cstdio>

namespace {

using namespace talnik;

constexpr int kRows = 100000;
constexpr int kRuns = 7;

/// By turns, so that both meet the same machine.
void Compare(const char* name, const std::function<double()>& ours, const std::function<double()>& raw) {
  std::vector<double> ourTimes;
  std::vector<double> rawTimes;
  for (int run = 0; run < kRuns; ++run) {
    ourTimes.push_back(ours());
    rawTimes.push_back(raw());
  }
  std::printf("%s %.0f %.0f\n", name, kRows / bench::Median(ourTimes), kRows / bench::Median(rawTimes));
}

void MakeEmpty(const QString& path) {
  QFile::remove(path);
  bench::Check(CreateStore(path), "create");
}

double OurInsert(const QString& path, const std::vector<ScheduleRecord>& rows) {
  MakeEmpty(path);
  Store store(path);
  bench::Check(store.Open(), "open");
  return bench::MillisecondsOf([&] {
    const bool kept = store.InTransaction([&] {
      return std::all_of(rows.begin(), rows.end(), [&](const ScheduleRecord& row) { return store.Insert(row); });
    });
    bench::Check(kept, "insert");
  });
}

double RawInsert(const QString& path, const bench::RawRows& rows) {
  MakeEmpty(path);
  const bench::RawFile file(path);
  return bench::MillisecondsOf([&] { rows.InsertInto(file); });
}

double OurRead(Store& store) {
  return bench::MillisecondsOf([&store] {
    qsizetype length = 0;
    store.ForEach(statements::All(), [&length](const ScheduleRecord& row) {
      length += row.appointment.size();
      return true;
    });
    bench::Check(length > kRows, "read");
  });
}

/// What is in a row, taken as what it is.
qsizetype LengthOfRow(sqlite3_stmt* row) {
  double sum = 0;
  qsizetype length = 0;
  for (int column = 0; column < bench::RawRows::kColumns; ++column) {
    if (sqlite3_column_type(row, column) == SQLITE_TEXT) {
      length += sqlite3_column_text(row, column) ? sqlite3_column_bytes(row, column) : 0;
    } else {
      sum += sqlite3_column_double(row, column);
    }
  }
  return length + (sum > 0 ? 1 : 0);
}

double RawRead(const bench::RawFile& file) {
  return bench::MillisecondsOf([&file] {
    sqlite3_stmt* read = file.Prepare("SELECT * FROM schedule");
    qsizetype length = 0;
    while (sqlite3_step(read) == SQLITE_ROW) length += LengthOfRow(read);
    sqlite3_finalize(read);
    bench::Check(length > kRows, "read");
  });
}

}  // namespace

int main() {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("ours.MDB"));
  const QString rawPath = folder.filePath(QStringLiteral("raw.MDB"));
  QRandomGenerator random(7);
  std::vector<ScheduleRecord> records(kRows);
  std::generate(records.begin(), records.end(), [&random] { return bench::RandomRow(random); });
  OurInsert(path, records);
  const bench::RawRows rows(bench::RawFile(path), "SELECT * FROM schedule");
  Compare(
      "insert", [&] { return OurInsert(path, records); }, [&] { return RawInsert(rawPath, rows); });
  Store store(path);
  const bench::RawFile file(rawPath);
  Compare(
      "read", [&] { return OurRead(store); }, [&] { return RawRead(file); });
}
