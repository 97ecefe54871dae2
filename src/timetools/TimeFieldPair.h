#pragma once

#include "dates/Date.h"
#include "shell/ControlEvents.h"
#include "shell/FocusSpeech.h"
#include "shell/Speech.h"
#include "timetools/SpinTimeField.h"

#include <QString>

#include <array>

class QLabel;
class QLineEdit;
class QWidget;

namespace talnik {

/// An hour field and a minute field that belong together: digits, spinning and what is said of them. The fields belong
/// to the form of `events` and outlive the pair.
class TimeFieldPair {
 public:
  enum class SpinSpeech { AtRelease, AtEachChange };

  TimeFieldPair(std::array<QLineEdit*, 2> fields, ControlEvents& events, Speech& speech, OpeningTitle& title,
                SpinSpeech spinSpeech);

  QString Hours() const;
  QString Minutes() const;
  /// Both fields empty.
  bool Empty() const { return Hours().isEmpty() && Minutes().isEmpty(); }
  void Set(const QString& hours, const QString& minutes);
  void Set(const Date& time);
  void SetFocus(int field);

 private:
  void Connect(int field, ControlEvents& events);
  void GotFocus(int field);
  void KeyDown(int field, Key& key);
  void KeyPress(int field, Key& key);
  void KeyUp(int field, Key& key);
  void TypeDigit(int field, QChar digit);
  void SayCharacterAtCaret(int field);
  QLineEdit* Field(int field) const { return fields_.at(static_cast<std::size_t>(field)); }

  std::array<QLineEdit*, 2> fields_;
  Speech& speech_;
  OpeningTitle& title_;
  SpinSpeech spinSpeech_;
  bool movedByDigit_ = false;
};

/// Makes the two fields of a form and their labels, which are named `labelName` and the field's number in brackets.
void MakeTimeFields(QWidget* form, const QString& labelName, std::array<QLabel*, 2>& labels,
                    std::array<QLineEdit*, 2>& fields);

}  // namespace talnik
