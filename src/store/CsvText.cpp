#include "store/CsvText.h"

#include <algorithm>
#include <array>

namespace talnik {

namespace {

enum CsvColumn { StartDay, StartTime, Subject, EndDay, EndTime, AlarmIsOn, AlarmDay, AlarmTime, CsvColumnCount };

using CsvFields = std::array<QStringView, CsvColumnCount>;

constexpr std::array<const char16_t*, CsvColumnCount> kTitles = {
    u"Počáteční datum",   u"Začátek",        u"Předmět", u"Koncové datum", u"Konec", u"Připomenutí zapnuto či vypnuto",
    u"Datum připomenutí", u"Čas připomenutí"};

QString Quoted(const QString& text) {
  return u'"' + text + u'"';
}

/// The two columns of a moment; the second is empty for a day without a time.
QString MomentColumns(const Date& moment) {
  const QString day = Quoted(DayText(moment)) + u',';
  if (!moment.HasTime()) return day;
  return day + Quoted(TimeText(moment).rightJustified(8, u'0'));
}

QString SubjectColumn(QString text) {
  text.replace(u"\r\n"_qs, u" "_qs).replace(u'\r', u' ').replace(u'\n', u' ');
  qsizetype from = 0;
  qsizetype to = text.size();
  while (from < to && text[from] == u' ') ++from;
  while (to > from && text[to - 1] == u' ') --to;
  return from == to ? QString() : Quoted(text.mid(from, to - from));
}

/// Split at each comma, within quotes too; what is missing is empty.
CsvFields SplitLine(QStringView line) {
  CsvFields fields;
  for (QStringView& field : fields) {
    const qsizetype comma = line.indexOf(u',');
    field = comma < 0 ? line : line.first(comma);
    if (comma < 0) break;
    line = line.sliced(comma + 1);
  }
  return fields;
}

QString WithoutQuotes(QStringView field) {
  return field.toString().remove(u'"');
}

std::optional<Date> MomentOf(QStringView day, QStringView time, const Date& today) {
  return CDate(WithoutQuotes(day) + u' ' + WithoutQuotes(time), today);
}

}  // namespace

QString CsvHeader() {
  QString header;
  for (const char16_t* title : kTitles) {
    if (!header.isEmpty()) header += u',';
    header += Quoted(QString::fromUtf16(title));
  }
  return header;
}

QString CsvLine(const ScheduleRecord& row) {
  if (!row.apptime) return QString();
  QString line = MomentColumns(*row.apptime) + u',' + SubjectColumn(row.appointment) + u',';
  if (row.appdur) line += MomentColumns(*row.appdur);
  line += u',';
  line += row.alarm ? u"TRUE,"_qs : u"FALSE,"_qs;
  return line + (row.alarm && row.alarmtime ? MomentColumns(*row.alarmtime) : u","_qs);
}

bool IsCsvRow(QStringView line) {
  return line.startsWith(u'"');
}

std::optional<ScheduleRecord> CsvRecord(QStringView line, const Date& today) {
  const CsvFields fields = SplitLine(line);
  ScheduleRecord row;
  row.apptime = MomentOf(fields[StartDay], fields[StartTime], today);
  if (!row.apptime) return {};
  row.appointment = WithoutQuotes(fields[Subject]).remove(u';');
  row.appdur = MomentOf(fields[EndDay], fields[EndTime], today).value_or(*row.apptime);
  row.alarm = fields[AlarmIsOn].contains(u"TRUE", Qt::CaseInsensitive);
  row.alarmtime = MomentOf(fields[AlarmDay], fields[AlarmTime], today);
  return row;
}

QStringView CsvLines::Next() {
  const auto isEnd = [](QChar letter) { return letter == u'\n' || letter == u'\r'; };
  const QChar* from = text_.begin() + at_;
  const QChar* to = std::find_if(from, text_.end(), isEnd);
  at_ = to - text_.begin();
  if (to != text_.end()) at_ += text_.sliced(at_).startsWith(u"\r\n") ? 2 : 1;
  return {from, to};
}

}  // namespace talnik
