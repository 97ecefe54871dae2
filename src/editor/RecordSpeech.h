#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// What a page key says of the record it came to: its start, without the day when that is the day of the record left
/// behind, and its text.
QString RecordBrief(const QString& lastShownStart, const QString& start, const QString& text, const Date& today);

/// What a page key says in the start field: "8:30 datum 15.1.2024", without a time at midnight.
QString StartSpeech(const QString& start, const Date& today);

/// "Záznam 2 z 5."
QString PositionMessage(qsizetype position, qsizetype count);

}  // namespace talnik
