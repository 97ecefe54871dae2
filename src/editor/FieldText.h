#pragma once

#include <QString>

namespace talnik {

/// Without the blanks at both ends; line ends and tabs stay.
QString TrimBlanks(const QString& text);
/// Without the blanks at its end.
QString TrimEndBlanks(const QString& text);

}  // namespace talnik
