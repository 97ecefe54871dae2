#pragma once

#include "dates/MonthLines.h"
#include "recurrence/RuleText.h"
#include "shell/Form.h"

#include <QString>

#include <array>
#include <functional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace talnik {

/// The rule of the record being edited and its start; the dialog reads them on load and writes them on OK.
struct RepeatState {
  QString Repeat_Rule = {};
  QString Repeat_StartTime = {};  ///< local date text
};

/// What OpenRepeatEditor needs of the record's form.
struct RepeatHost {
  RepeatState& state;
  std::function<QString()> text3;  ///< start
  std::function<void(const QString&)> setText3;
  std::function<QString()> text4;  ///< end
  std::function<void(const QString&)> setText4;
  std::function<void(const QString&)> setRepeatCaption;    ///< caption of cmdRepeat
  std::function<void()> showDialog;                        ///< frmRepeat, modally
  std::function<bool(const QString& newRule)> editSeries;  ///< EditRecurrentEvent with the current row; true when done
  std::function<void()> unload;
};

/// The handler of cmdRepeat: lets the user compose the rule and carries what came of it into the form.
void OpenRepeatEditor(const RepeatHost& host, const Date& today);

/// The caption of cmdRepeat for a record with this rule.
QString RepeatCaption(const QString& rule);

/// "Zopakovat": composes the rule of a recurring event.
class frmRepeat : public Form {
  Q_OBJECT

 public:
  frmRepeat(FormServices& services, const CalendarNames& names, RepeatState& state, QWidget* parent = nullptr);

  /// Shows the dialog until OK or Storno.
  void Run() { ShowModal(); }
};

}  // namespace talnik
