#pragma once

#include "platform/none/None.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <vector>

namespace talnik::bench {

/// A voice that remembers when it was last spoken to.
class TimedVoice : public NoneVoice {
 public:
  TimedVoice() { clock_.start(); }

  void Speak(const QString&, Join, Urgency) override { spokenAt_ = clock_.nsecsElapsed(); }

  /// From now on.
  void Listen() {
    spokenAt_ = 0;
    listenedAt_ = clock_.nsecsElapsed();
  }
  bool WasSpoken() const { return spokenAt_ > 0; }
  /// From Listen to the last text.
  double Milliseconds() const { return static_cast<double>(spokenAt_ - listenedAt_) / 1e6; }

 private:
  QElapsedTimer clock_;
  qint64 spokenAt_ = 0;
  qint64 listenedAt_ = 0;
};

/// The median time in milliseconds from a key to the speech that it sets off; endless when a key is not answered.
inline double MedianToSpeech(TimedVoice& voice, QWidget* control, Qt::Key key, int presses) {
  std::vector<double> times;
  for (int i = 0; i < presses; ++i) {
    voice.Listen();
    QTest::keyClick(control, key);
    constexpr double never = 1e9;
    times.push_back(voice.WasSpoken() ? voice.Milliseconds() : never);
    QApplication::processEvents();
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

}  // namespace talnik::bench
