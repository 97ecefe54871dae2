#include "dates/CzechNumbers.h"

#include <QCoreApplication>

namespace talnik {

namespace {

struct Forms {
  const char* one;
  const char* few;
  const char* many;
  const char* pastOne;
  const char* pastOther;
};

constexpr Forms kYears = {QT_TRANSLATE_NOOP("CzechNumbers", "rok"), QT_TRANSLATE_NOOP("CzechNumbers", "roky"),
                          QT_TRANSLATE_NOOP("CzechNumbers", "roků"), QT_TRANSLATE_NOOP("CzechNumbers", "rokem"),
                          QT_TRANSLATE_NOOP("CzechNumbers", "roky")};
constexpr Forms kDays = {QT_TRANSLATE_NOOP("CzechNumbers", "den"), QT_TRANSLATE_NOOP("CzechNumbers", "dny"),
                         QT_TRANSLATE_NOOP("CzechNumbers", "dnů"), QT_TRANSLATE_NOOP("CzechNumbers", "dnem"),
                         QT_TRANSLATE_NOOP("CzechNumbers", "dny")};
constexpr Forms kHours = {QT_TRANSLATE_NOOP("CzechNumbers", "hodinu"), QT_TRANSLATE_NOOP("CzechNumbers", "hodiny"),
                          QT_TRANSLATE_NOOP("CzechNumbers", "hodin"), QT_TRANSLATE_NOOP("CzechNumbers", "hodinou"),
                          QT_TRANSLATE_NOOP("CzechNumbers", "hodinami")};
constexpr Forms kMinutes = {QT_TRANSLATE_NOOP("CzechNumbers", "minutu"), QT_TRANSLATE_NOOP("CzechNumbers", "minuty"),
                            QT_TRANSLATE_NOOP("CzechNumbers", "minut"), QT_TRANSLATE_NOOP("CzechNumbers", "minutou"),
                            QT_TRANSLATE_NOOP("CzechNumbers", "minutami")};

QString Phrase(qint64 n, bool past, const Forms& forms) {
  const char* word = forms.many;
  if (past) {
    word = n == 1 ? forms.pastOne : forms.pastOther;
  } else if (n == 1) {
    word = forms.one;
  } else if (n >= 2 && n <= 4) {
    word = forms.few;
  }
  return QString::number(n) + u' ' + QCoreApplication::translate("CzechNumbers", word) + u' ';
}

}  // namespace

QString YearsWord(qint64 n, bool past) {
  return Phrase(n, past, kYears);
}

QString DaysWord(qint64 n, bool past) {
  return Phrase(n, past, kDays);
}

QString HoursWord(qint64 n, bool past) {
  return Phrase(n, past, kHours);
}

QString MinutesWord(qint64 n, bool past) {
  return Phrase(n, past, kMinutes);
}

}  // namespace talnik
