#include "timetools/PickDate.h"

#include "dates/Date.h"
#include "store/Text.h"
#include "timetools/frmPickDate.h"

#include <QLineEdit>
#include <QLoggingCategory>

namespace talnik {
namespace {

Q_LOGGING_CATEGORY(pickDateTrace, "talnik.trace", QtWarningMsg)

/// The date of a text to begin with: today where it names no day.
Date StartingDate(const QString& text, const Date& now) {
  const auto date = CDate(text, now);
  if (!date) return now.DateValue();
  if (date->DateValue() != Date()) return *date;
  return Date::FromSeconds(now.DateValue().Seconds() + date->Seconds()).value_or(now);
}

}  // namespace

bool PickDate(FormServices& services, const CalendarNames& names, QLineEdit* control, QWidget* parent, int tag) {
  const Date start = StartingDate(control->text(), Date::FromQDateTime(services.clock.Now()));
  qCInfo(pickDateTrace).noquote() << u"Talnik.PickDate: "_qs + DateText(start);

  frmPickDate picker(services, names, tag, parent);
  picker.Open(start);
  if (picker.Cancelled) return false;
  control->setText(TrimSeconds(DateText(picker.Chosen)));
  return true;
}

}  // namespace talnik
