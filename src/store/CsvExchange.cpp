#include "store/CsvExchange.h"

#include "store/CsvText.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Text.h"
#include "store/WithoutIndexes.h"

#include <QByteArray>
#include <QSet>

namespace talnik {

namespace {

/// A few milliseconds of work.
constexpr qint64 kRowsInOneGo = 500;

/// What makes two appointments the same: start, end and text. No end is an end at the start.
QByteArray IdentityOfRow(const Date& start, const std::optional<Date>& end, QUtf8StringView text) {
  const std::int64_t moments[] = {start.Seconds(), end.value_or(start).Seconds()};
  const char* from = text.data();
  const char* to = from + text.size();
  while (from != to && *from == ' ') ++from;
  while (from != to && to[-1] == ' ') --to;
  QByteArray identity(reinterpret_cast<const char*>(moments), sizeof moments);
  return identity.append(from, to - from);
}

class Import {
 public:
  Import(Store& store, const QString& text, const Date& today, const CsvProgress& progress)
      : store_(store), text_(text), today_(today), progress_(progress) {}

  bool Run() { return ReadKnown() && TakeLines() && GoesOn(text_.size()); }
  bool Cancelled() const { return cancelled_; }
  const CsvImport& Counts() const { return counts_; }

 private:
  bool ReadKnown();
  bool TakeLines();
  bool ImportRow(QStringView line);
  bool GoesOn(qint64 done);

  Store& store_;
  const QString& text_;
  const Date& today_;
  const CsvProgress& progress_;
  QSet<QByteArray> known_;
  CsvImport counts_;
  bool cancelled_ = false;
};

bool Import::GoesOn(qint64 done) {
  cancelled_ = cancelled_ || !progress_(done, text_.size());
  return !cancelled_;
}

bool Import::ReadKnown() {
  qint64 read = 0;
  const Statement rows{u"SELECT apptime,appdur,appointment FROM schedule WHERE apptime IS NOT NULL"_qs, {}};
  const bool allRead = store_.ForEachRow(rows, [&](const StoreRow& row) {
    if (const auto start = row.Moment(0)) known_.insert(IdentityOfRow(*start, row.Moment(1), row.Utf8(2)));
    return ++read % kRowsInOneGo != 0 || GoesOn(0);
  });
  return allRead && !cancelled_;
}

bool Import::TakeLines() {
  CsvLines lines(text_);
  lines.Next();  // the titles
  for (qint64 taken = 1; !lines.AtEnd(); ++taken) {
    if (!ImportRow(lines.Next())) return false;
    if (taken % kRowsInOneGo == 0 && !GoesOn(lines.Position())) return false;
  }
  return true;
}

/// False when a row could not be written.
bool Import::ImportRow(QStringView line) {
  if (!IsCsvRow(line)) return true;
  std::optional<ScheduleRecord> row = CsvRecord(line, today_);
  if (row) row->appointment = CutToSize(row->appointment, AppointmentSize);
  const auto identity = row ? IdentityOfRow(*row->apptime, row->appdur, row->appointment.toUtf8()) : QByteArray();
  if (!row || known_.contains(identity)) {
    ++counts_.rejected;
    return true;
  }
  if (!store_.Insert(*row)) return false;
  known_.insert(identity);
  ++counts_.imported;
  counts_.hasAlarms = counts_.hasAlarms || row->alarm;
  return true;
}

/// True where making the indexes anew costs less than keeping them row by row.
bool WritesMost(Store& store, const QString& text) {
  constexpr qsizetype lettersOfARow = 100;
  constexpr qsizetype few = 500;
  const qsizetype rows = text.size() / lettersOfARow;
  return rows > few && rows > store.Number(statements::CountAll()).value_or(0);
}

}  // namespace

CsvExport ExportCsv(Store& store, const CsvProgress& progress) {
  CsvExport result;
  result.text = CsvHeader() + u"\r\n"_qs;
  const qint64 total = store.Number(statements::CountAll()).value_or(0);
  const Statement rows{u"SELECT apptime,appointment,appdur,alarm,alarmtime FROM schedule ORDER BY rowid"_qs, {}};
  qint64 read = 0;
  bool cancelled = false;
  const bool allRead = store.ForEach(rows, [&](const ScheduleRecord& row) {
    if (AddCsvLine(result.text, row)) {
      result.text += u"\r\n";
      ++result.rows;
    }
    cancelled = ++read % kRowsInOneGo == 0 && !progress(read, total);
    return !cancelled;
  });
  result.end = cancelled ? CsvEnd::Cancelled : allRead ? CsvEnd::Done : CsvEnd::Failed;
  return result;
}

CsvImport ImportCsv(Store& store, const QString& text, const Date& today, const CsvProgress& progress) {
  Import import(store, text, today, progress);
  CsvImport result;
  const auto run = [&import] { return import.Run(); };
  if (WritesMost(store, text) ? WithoutIndexes(store, run) : store.InTransaction(run)) {
    result = import.Counts();
    result.end = CsvEnd::Done;
  } else if (import.Cancelled()) {
    result.end = CsvEnd::Cancelled;
  }
  return result;
}

QString CsvFolder(const QString& path) {
  const qsizetype separator = path.lastIndexOf(u'/');
  return path.left(separator == 0 ? 1 : separator < 0 ? 0 : separator);
}

QString WithCsvEnding(const QString& path) {
  const QString ending = u".csv"_qs;
  return path.endsWith(ending, Qt::CaseInsensitive) ? path : QString(path + ending);
}

}  // namespace talnik
