#include "store/CsvText.h"

#include "store/Text.h"

#include <algorithm>
#include <array>

namespace talnik {

namespace {

enum CsvColumn { StartDay, StartTime, Subject, EndDay, EndTime, AlarmIsOn, AlarmDay, AlarmTime, CsvColumnCount };

using CsvFields = std::array<QStringView, CsvColumnCount>;

constexpr std::array<const char16_t*, CsvColumnCount> kTitles = {
    u"Počáteční datum",   u"Začátek",        u"Předmět", u"Koncové datum", u"Konec", u"Připomenutí zapnuto či vypnuto",
    u"Datum připomenutí", u"Čas připomenutí"};

/// The two columns of a moment; the second is empty for a day without a time.
void AddMoment(QString& text, const Date& moment) {
  text += u'"' + DayText(moment) + u"\",";
  if (moment.HasTime()) text += u'"' + TimeText(moment).rightJustified(8, u'0') + u'"';
}

void AddSubject(QString& text, const QString& subject) {
  const QString line = OnOneLine(subject);
  if (!line.isEmpty()) text += u'"' + line + u'"';
}

void AddWithoutQuotes(QString& text, QStringView field) {
  while (true) {
    const qsizetype quote = field.indexOf(u'"');
    text += quote < 0 ? field : field.first(quote);
    if (quote < 0) return;
    field = field.sliced(quote + 1);
  }
}

std::optional<Date> MomentOf(QStringView day, QStringView time, const Date& today) {
  QString text;
  text.reserve(day.size() + 1 + time.size());
  AddWithoutQuotes(text, day);
  text += u' ';
  AddWithoutQuotes(text, time);
  return CDate(text, today);
}

}  // namespace

QString CsvHeader() {
  QString header;
  for (const char16_t* title : kTitles) {
    if (!header.isEmpty()) header += u',';
    header += u'"' + QString::fromUtf16(title) + u'"';
  }
  return header;
}

bool AddCsvLine(QString& text, const ScheduleRecord& row) {
  if (!row.apptime) return false;
  AddMoment(text, *row.apptime);
  text += u',';
  AddSubject(text, row.appointment);
  text += u',';
  if (row.appdur) AddMoment(text, *row.appdur);
  text += row.alarm ? u",TRUE," : u",FALSE,";
  if (row.alarm && row.alarmtime) {
    AddMoment(text, *row.alarmtime);
  } else {
    text += u',';
  }
  return true;
}

bool IsCsvRow(QStringView line) {
  return line.startsWith(u'"');
}

std::optional<ScheduleRecord> CsvRecord(QStringView line, const Date& today) {
  const CsvFields fields = SplitFields<CsvColumnCount>(line, u',');
  ScheduleRecord row;
  row.apptime = MomentOf(fields[StartDay], fields[StartTime], today);
  if (!row.apptime) return {};
  AddWithoutQuotes(row.appointment, fields[Subject]);
  row.appointment.remove(u';');
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
