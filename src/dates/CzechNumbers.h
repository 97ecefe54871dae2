#pragma once

#include <QString>

namespace talnik {

/// The count, a blank, the Czech word for it and one blank: "5 minut ". `past` gives the form after "Před".
QString YearsWord(qint64 n, bool past);
QString DaysWord(qint64 n, bool past);
QString HoursWord(qint64 n, bool past);
QString MinutesWord(qint64 n, bool past);

}  // namespace talnik
