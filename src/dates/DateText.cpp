#include "dates/Date.h"

namespace talnik {

namespace {

/// Walks over the text of a date. Every number has a cap on its digits, so a text of any length is judged by its
/// first characters; only blanks are passed over without end.
class Reader {
 public:
  explicit Reader(QStringView text) : text_(text) { SkipBlanks(); }

  bool AtEnd() const { return at_ == text_.size(); }
  bool AfterBlank() const { return blankBefore_; }

  std::optional<int> Number(int maxDigits) {
    const qsizetype from = at_;
    int value = 0;
    while (at_ < text_.size() && text_[at_] >= u'0' && text_[at_] <= u'9') {
      if (at_ - from == maxDigits) return {};
      value = value * 10 + (text_[at_].unicode() - u'0');
      ++at_;
    }
    if (at_ == from) return {};
    SkipBlanks();
    return value;
  }

  bool Take(QChar separator) {
    if (AtEnd() || text_[at_] != separator) return false;
    ++at_;
    SkipBlanks();
    return true;
  }

 private:
  void SkipBlanks() {
    const qsizetype from = at_;
    while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
    blankBefore_ = at_ != from;
  }

  QStringView text_;
  qsizetype at_ = 0;
  bool blankBefore_ = false;
};

struct Parts {
  bool hasDay = false;
  bool hasYear = false;
  int day = 0, month = 0, year = 0;
  bool hasTime = false;
  int hour = 0, minute = 0, second = 0;
};

/// One half of a date text: a day or a time, told apart by what follows its first number.
bool ReadHalf(Reader& reader, Parts& parts) {
  const auto first = reader.Number(2);
  if (!first) return false;
  if (!parts.hasDay && reader.Take(u'.')) {
    const auto month = reader.Number(2);
    if (!month) return false;
    parts.hasDay = true;
    parts.day = *first;
    parts.month = *month;
    if (!reader.Take(u'.')) return true;
    const auto year = reader.Number(4);
    parts.hasYear = year.has_value();
    parts.year = year.value_or(0);
    return parts.hasYear;
  }
  if (parts.hasTime || !reader.Take(u':')) return false;
  const auto minute = reader.Number(2);
  if (!minute) return false;
  parts.hasTime = true;
  parts.hour = *first;
  parts.minute = *minute;
  if (!reader.Take(u':')) return true;
  const auto second = reader.Number(2);
  parts.second = second.value_or(0);
  return second.has_value();
}

QString TwoDigits(int number) {
  return QString::number(number).rightJustified(2, u'0');
}

}  // namespace

std::optional<Date> CDate(const QString& text, const Date& today) {
  Reader reader(text);
  Parts parts;
  if (!ReadHalf(reader, parts)) return {};
  if (!reader.AtEnd()) {
    if (!reader.AfterBlank() || !ReadHalf(reader, parts) || !reader.AtEnd()) return {};
    if (!parts.hasYear) return {};
  }
  if (!parts.hasDay) return Date::FromParts(1899, 12, 30, parts.hour, parts.minute, parts.second);
  const int year = parts.hasYear ? parts.year : today.Year();
  return Date::FromParts(year, parts.month, parts.day, parts.hour, parts.minute, parts.second);
}

bool IsDate(const QString& text, const Date& today) {
  return CDate(text, today).has_value();
}

QString DayText(const Date& date) {
  return QString::number(date.Day()) + u'.' + QString::number(date.Month()) + u'.' + QString::number(date.Year());
}

QString TimeText(const Date& date) {
  return QString::number(date.Hour()) + u':' + TwoDigits(date.Minute()) + u':' + TwoDigits(date.Second());
}

QString DateText(const Date& date) {
  if (date.DateValue() == Date()) return TimeText(date);
  return date.HasTime() ? QString(DayText(date) + u' ' + TimeText(date)) : DayText(date);
}

}  // namespace talnik
