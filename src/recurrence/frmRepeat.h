#pragma once

#include "dates/MonthLines.h"
#include "recurrence/RepeatChoice.h"
#include "shell/FocusSpeech.h"
#include "shell/Form.h"

#include <array>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace talnik {

/// "Zopakovat": composes the rule of a recurring event.
class frmRepeat : public Form {
  Q_OBJECT

 public:
  frmRepeat(FormServices& services, const CalendarNames& names, RepeatState& state, QWidget* parent = nullptr);

  /// Shows the dialog until OK or Storno.
  void Run();

  QLabel* lblTimeUnit = nullptr;
  QComboBox* cmbTimeUnit = nullptr;
  QLabel* Label2 = nullptr;
  QComboBox* cmbUnits = nullptr;
  QGroupBox* frmDays = nullptr;
  std::array<QCheckBox*, 7> chkDay{};  ///< Monday first
  QGroupBox* frmMonth = nullptr;
  std::array<QRadioButton*, 2> optMonthDay{};
  QGroupBox* frmEnd = nullptr;
  std::array<QRadioButton*, 3> optEnd{};
  QLabel* Label1 = nullptr;
  QComboBox* cmbNumber = nullptr;
  QLabel* Label3 = nullptr;
  QLineEdit* txtDeadLine = nullptr;
  QPushButton* cmdPickDate = nullptr;
  QPushButton* cmdOK = nullptr;
  QPushButton* cmdCancel = nullptr;

 private:
  void BuildControls();
  void BuildDays(QGridLayout* grid);
  void BuildMonth(QGridLayout* grid);
  void BuildEnd(QGridLayout* grid);
  void BuildButtons(QGridLayout* grid);
  QComboBox* MakeList(QLabel* label, const char* name, const QStringList& lines);
  QRadioButton* MakeOption(const QString& name, const QString& caption, QWidget* frame);

  void LoadForm();
  void LoadRule(const RuleText& rule);
  void LoadEnd(const RuleText& rule);

  void cmbTimeUnit_Click();
  void optEnd_Click(int index);
  void EnableEnd(bool count, bool date);
  void txtDeadLine_Change();
  void cmdPickDate_Click();
  void cmdOK_Click();

  WeekdaySet CheckedDays() const;
  /// Nothing when the end date is none.
  std::optional<RepeatChoice> Choice() const;

  const CalendarNames& names_;
  RepeatState& state_;
  Date start_;
  bool loading_ = false;
  OpeningTitle title_;
};

}  // namespace talnik
