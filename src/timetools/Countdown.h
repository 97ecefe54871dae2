#pragma once

#include "dates/Date.h"

#include <QString>

namespace talnik {

/// The one countdown of the program. Owned by the main window, whose timer notices its end.
struct Countdown {
  bool CountdownRunning = false;
  Date CountdownEnd;
  bool CountdownRung = false;  ///< guards the end against a second ring
};

/// The date text of the moment that lies `hours` and `minutes` after `now`; empty when that is no date any more.
QString EndOfCountdownText(int hours, int minutes, const Date& now);

enum class CountdownAnswer { Set, Cancelled, Refused };

/// Starts the countdown from the texts of the two fields, or replaces the one that runs; zero cancels it. An empty
/// field counts as 0. A refusal changes nothing.
CountdownAnswer SetCountdown(Countdown& countdown, const QString& hours, const QString& minutes, const Date& now);

/// What is said of the answer; empty for a refusal.
QString CountdownAnswerText(CountdownAnswer answer);

/// The time left as "hh:nn:ss"; zeros when the end has passed.
QString CountdownLeftText(const Countdown& countdown, const Date& now);

/// The time left as it is spoken, "1 hodin 5 minut "; what is zero is left out.
QString CountdownLeftSentence(const Countdown& countdown, const Date& now);

}  // namespace talnik
