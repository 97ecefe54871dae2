#pragma once

#include "alarms/AlarmQueue.h"
#include "dates/MonthLines.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"
#include "timetools/Countdown.h"
#include "timetools/TimeEntry.h"

#include <QTimer>

#include <functional>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace talnik {

/// What the alarm box works on besides the services of every window.
struct AlarmBoxContext {
  AlarmQueue& queue;
  Countdown& countdown;
  TimeEntry& entry;
  const CalendarNames& names;
  QString recordFolder;
  std::function<void()> refreshMonth;  ///< speaks and shows the day of the month list anew
};

/// Interrupts the user when an alarm or the countdown ends: plays the sound in rounds until the user acts, and shows,
/// deletes or postpones the event. One object serves one showing; one box at a time.
class frmAlarmBox : public Form {
  Q_OBJECT

 public:
  enum class Role { Alarm, Countdown };

  frmAlarmBox(FormServices& services, AlarmBoxContext context, Role role, QWidget* parent = nullptr);
  ~frmAlarmBox() override;

  /// Shows the box modally until it is answered or closed. close() answers it like "Zavřít".
  void Open() { ShowModal(); }

  bool AlarmLoopAllowed = true;  ///< falls as soon as the user does anything
  bool AlarmBoxGone = true;      ///< from unload until the next activation

  QPlainTextEdit* Text1 = nullptr;
  QPushButton* cmdShow = nullptr;
  QPushButton* cmdPlay = nullptr;
  QPushButton* cmdDelay = nullptr;
  QPushButton* cmdDel = nullptr;
  QPushButton* cmdCancel = nullptr;
  QLineEdit* txtDelayReceptor = nullptr;

  /// Plays one round: the voice note of the alarm, else (and with `useDefault`) the sound of the settings.
  void PlayAlarmSound(bool useDefault);

 public Q_SLOTS:
  void done(int result) override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void BuildControls();
  void ConnectKeys();
  void LoadAlarm();
  void LoadCountdown();
  void AlarmSoundLoop(bool isCountdown);
  bool OnceMore(bool isCountdown, int rounds) const;
  void PauseAfterSilence();
  bool IsCountdown() const { return role_ == Role::Countdown; }
  QString SoundFile(bool useDefault) const;
  QString EventText() const;
  void ShowEventText();

  void FormKeyDown(Key& key);
  void FormKeyUp(Key& key);
  void Text1_GotFocus();
  void cmdShow_Click();
  void cmdPlay_Click();
  void cmdDelay_Click();
  void cmdDel_Click();
  void cmdCancel_Click();

  AlarmBoxContext context_;
  Role role_;
  OpeningTitle title_;
  QString AlarmTimeText;  ///< as shown
  QTimer Timer_Offset;
  bool unloaded_ = false;
};

}  // namespace talnik
