#include "sync/ExchangeFile.h"

#include "platform/CodePage.h"
#include "platform/WholeFile.h"
#include "store/Store.h"
#include "store/Text.h"

#include <QSet>

namespace talnik {

namespace {

enum ExportColumn { OutTitle, OutStart, OutEnd, OutAlarm, OutAlarmTime, OutRule, OutGuid, OutStatus };

const QString& ExportSql() {
  static const QString sql =
      u"SELECT appointment,apptime,appdur,alarm,alarmtime,recur,guid,status FROM schedule "
      u"WHERE status IS NULL OR status<>1 ORDER BY rowid"_qs;
  return sql;
}

void AppendTwoDigits(QString& text, int number) {
  text += QChar(u'0' + number / 10);
  text += QChar(u'0' + number % 10);
}

/// A moment with a time of two digits each; one without a time, with `midnight` behind the day.
void AppendExportMoment(QString& text, const Date& moment, QStringView midnight) {
  text += DayText(moment);
  // The bare time of serial day 0 is a time even at midnight.
  if (!moment.HasTime() && moment != Date()) {
    text += midnight;
    return;
  }
  text += u' ';
  AppendTwoDigits(text, moment.Hour());
  text += u':';
  AppendTwoDigits(text, moment.Minute());
  text += u':';
  AppendTwoDigits(text, moment.Second());
}

/// Without what separates fields, which the editor does not let in either.
QString TitleField(QString text) {
  return OnOneLine(text.remove(u';'));
}

void AppendExportLine(QString& text, const StoreRow& row, const QString& guid, int status) {
  const auto start = row.Moment(OutStart);
  const auto end = row.Moment(OutEnd);
  const auto alarm = row.IsNull(OutAlarm) ? std::nullopt : row.Moment(OutAlarmTime);
  text += TitleField(row.Text(OutTitle)) + u';';
  if (start) AppendExportMoment(text, *start, {});
  text += u';';
  if (end || start) AppendExportMoment(text, end ? *end : *start, {});
  text += u';';
  if (alarm) AppendExportMoment(text, *alarm, u" 0:00:00");
  text += u';' + WithoutOuterBlanks(row.Text(OutRule)).toString() + u';' + guid + u';' + QString::number(status) +
          u"\r\n"_qs;
}

}  // namespace

std::optional<QString> ExportDataForGoogle(Store& store, qint64& count) {
  QString text;
  QSet<QString> written;
  count = 0;
  const bool read = store.ForEachRow({ExportSql(), {}}, [&](const StoreRow& row) {
    const QString guid = StripAtNul(row.Text(OutGuid));
    const int status = row.IsNull(OutStatus) ? StatusSingle : static_cast<int>(row.Number(OutStatus));
    if (status == StatusSingle && written.contains(guid)) return true;
    if (!guid.isEmpty()) written.insert(guid);
    AppendExportLine(text, row, guid, status);
    ++count;
    return true;
  });
  if (!read) return {};
  return text;
}

std::optional<QString> ReadExchangeFile(const QString& path, const CodePage& codePage, QString& reason) {
  const auto bytes = ReadWholeFile(path, reason);
  if (!bytes) return {};
  return codePage.Decode(*bytes);
}

bool WriteExchangeFile(const QString& path, const QString& text, const CodePage& codePage, QString& reason) {
  return WriteWholeFile(path, codePage.Encode(text), Readers::UserAlone, reason);
}

ExchangeLines::ExchangeLines(QStringView text) : text_(text), endSize_(text.contains(u"\r\n") ? 2 : 1) {}

qsizetype ExchangeLines::FindEnd(qsizetype from) const {
  if (endSize_ == 2) return text_.indexOf(u"\r\n", from);
  while (from < text_.size() && text_[from] != u'\n' && text_[from] != u'\r') ++from;
  return from < text_.size() ? from : -1;
}

QStringView ExchangeLines::Next() {
  const qsizetype end = FindEnd(at_);
  atEnd_ = end < 0;
  const QStringView line = text_.sliced(at_, (atEnd_ ? text_.size() : end) - at_);
  at_ = atEnd_ ? text_.size() : end + endSize_;
  return line;
}

qsizetype ExchangeLines::Count() const {
  qsizetype count = 1;
  for (qsizetype end = FindEnd(0); end >= 0; end = FindEnd(end + endSize_)) ++count;
  return count;
}

}  // namespace talnik
