// KCalendarCore's walk over the dates of the rules. It is built upon Qt 5, so it is a program of its own that shares
// nothing with ours but the rules. In UTC it has the least to do.

#include "Rules.h"

#include <QDateTime>

#include <KCalendarCore/ICalFormat>
#include <KCalendarCore/RecurrenceRule>

int main() {
  QDateTime start = QDateTime::fromString(QLatin1String(peers::kStart), QStringLiteral("yyyyMMdd'T'HHmmss"));
  start.setTimeSpec(Qt::UTC);
  KCalendarCore::ICalFormat format;
  peers::MeasureRules([&](const char* text) {
    KCalendarCore::RecurrenceRule rule;
    if (!format.fromString(&rule, QLatin1String(text))) return std::size_t{0};
    rule.setStartDt(start);
    return static_cast<std::size_t>(rule.timesInInterval(start, start.addYears(3)).size());
  });
}
