#include "calendar/MainWindow.h"
#include "recurrence/frmDeleteRecurrentEvent.h"
#include "shell/frmProgress.h"
#include "support/FormWorld.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

namespace talnik::test {
namespace {

/// What a field shows at least of what stands in it: a date, or the end of a path.
constexpr int FieldDigits = 19;

int WidthOf(const QWidget& control, const QString& text) {
  return control.fontMetrics().horizontalAdvance(text);
}

/// What the control needs for its text; a list or a note scrolls and needs a line.
QSize Needed(const QWidget& control) {
  if (const auto* label = qobject_cast<const QLabel*>(&control)) {
    return label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
  }
  if (qobject_cast<const QAbstractButton*>(&control)) return control.sizeHint();
  if (const auto* list = qobject_cast<const QComboBox*>(&control)) {
    return {WidthOf(*list, list->currentText()), list->sizeHint().height()};
  }
  const QSize least = control.minimumSizeHint();
  if (const auto* field = qobject_cast<const QLineEdit*>(&control)) {
    return {std::min(WidthOf(*field, field->text()), WidthOf(*field, QString(FieldDigits, u'0'))), least.height()};
  }
  return {least.width(), control.fontMetrics().lineSpacing()};
}

bool HoldsText(const QWidget& control) {
  return qobject_cast<const QLabel*>(&control) || qobject_cast<const QAbstractButton*>(&control) ||
         qobject_cast<const QComboBox*>(&control) || qobject_cast<const QLineEdit*>(&control) ||
         qobject_cast<const QListView*>(&control) || qobject_cast<const QPlainTextEdit*>(&control);
}

/// A part of another control, as the field within a list that can be typed in.
bool IsPart(const QWidget& control) {
  const QWidget* parent = control.parentWidget();
  return parent && (qobject_cast<const QComboBox*>(parent) || HoldsText(*parent));
}

/// Every title of the menu bar, the whole of every line of a list.
void ExpectWholeLines(const QWidget& window) {
  for (const auto* bar : window.findChildren<QMenuBar*>()) {
    for (QAction* title : bar->actions()) {
      EXPECT_TRUE(bar->rect().contains(bar->actionGeometry(title))) << title->text().toStdString();
    }
  }
  for (const auto* list : window.findChildren<QListView*>()) {
    for (int row = 0; list->isVisible() && row < list->model()->rowCount(); ++row) {
      const QModelIndex index = list->model()->index(row, 0);
      const QString text = index.data().toString();
      const QRect line = list->visualRect(index);
      EXPECT_LE(line.width(), list->viewport()->width());
      const int flags = Qt::TextWordWrap | Qt::TextWrapAnywhere;
      const QRect needed = list->fontMetrics().boundingRect(QRect(0, 0, line.width(), 0), flags, text);
      EXPECT_GE(line.height() + list->fontMetrics().leading(), needed.height()) << text.toStdString();
    }
  }
}

/// Nothing of the window may be cut off or out of reach: what does not fit is in a view that scrolls down, never aside.
void ExpectReadable(QWidget& window) {
  FormDriver::Settle();
  SCOPED_TRACE(window.objectName().toStdString());
  const QRect screen = window.screen()->availableGeometry();
  EXPECT_TRUE(screen.contains(window.geometry()));
  EXPECT_GE(window.width(), std::min(WidthOf(window, window.windowTitle()), screen.width() - 20));
  for (const auto* area : window.findChildren<QScrollArea*>()) EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
  for (const QWidget* control : window.findChildren<QWidget*>()) {
    if (!control->isVisible() || !HoldsText(*control) || IsPart(*control)) continue;
    SCOPED_TRACE(control->objectName().toStdString());
    const QSize needed = Needed(*control);
    EXPECT_GE(control->width(), needed.width());
    EXPECT_GE(control->height(), needed.height());
    const QRect place(control->mapTo(control->parentWidget(), QPoint()), control->size());
    EXPECT_TRUE(control->parentWidget()->rect().contains(place));
  }
  ExpectWholeLines(window);
}

/// Nothing in it where a line may end.
const QString LongWord = QString(60, u'm');

class Screens : public MainWindow {
 protected:
  Screens() {
    // More than can be shown; each menu and the text of a message take the largest type that fits.
    world_.registry.Values[CommonKey() + u"|MenuSize"_qs] = quint32{100};
    world_.profile.Values[InData("talnik.ini") + u"|Info|TextSize"_qs] = u"1000"_qs;
  }

  /// Looks at the next window; then `further` is played in it.
  void ExpectWindow(std::function<void(QWidget&)> further = {}) {
    user_.Expect([this, further](QWidget* dialog) {
      seen_ << dialog->objectName();
      ExpectReadable(*dialog);
      if (further) further(*dialog);
      if (dialog->isVisible()) dialog->close();
    });
  }
  /// The same for a window that the button of another one opens.
  void Press(QWidget& window, const char* button) {
    ExpectWindow();
    FormDriver::Find<QPushButton>(&window, button)->click();
  }

  QStringList seen_;
};

TEST_F(Screens, EveryWindowIsReadableInItsLargestType) {
  const QString text = u"Návštěva u lékaře, o které se dá napsat víc než na jeden řádek, viz "_qs + LongWord;
  world_.folders.Add(u"/home/eva/"_qs + LongWord + u"/Zápis "_qs + LongWord + u".csv"_qs);
  Add(text, u"15.1.2024 9:00"_qs);
  Add(text, u"15.1.2024 8:45"_qs, {}, u"15.1.2024 8:30:01"_qs);
  Start();
  ExpectReadable(*main_);
  ExpectWindow([this](QWidget& watch) { Press(watch, "cmdLapTime"); });
  Choose("mnuRaceTime");
  ExpectWindow([](QWidget& settings) {
    FormDriver::Find<QTabBar>(&settings, "TabStrip1")->setCurrentIndex(1);
    ExpectReadable(settings);
  });
  Choose("mnuSettings");
  for (const char* command : {"mnuTimeOut", "mnuSetTime", "mnuDingHour", "mnuSetDate", "mnuHolFind", "mnuSetSysDate",
                              "mnuHelpCheckUpdate", "mnuSearchRecord", "mnuSpareTime"}) {
    ExpectWindow();
    Choose(command);
    FormDriver::Settle();
    EXPECT_TRUE(user_.AllCame()) << command;
  }
  ExpectWindow([this](QWidget& picker) {
    user_.Act(u"Return"_qs, &picker);
    ExpectReadable(picker);
  });
  Choose("mnuImport");
  ExpectWindow([this](QWidget& editor) {
    for (const char* button : {"cmdPickDate1", "cmdRepeat"}) Press(editor, button);
  });
  Choose("mnuTaskToday");
  FormDriver::Settle();

  ExpectWindow();
  user_.Press(Qt::Key_F4, Qt::AltModifier);
  ExpectWindow([this](QWidget& box) { Press(box, "cmdDelay"); });
  world_.clock.Moment = world_.clock.Moment.addSecs(1);
  EXPECT_TRUE(FormDriver::Until([this] { return user_.AllCame() && !QApplication::activeModalWidget(); }));

  seen_.removeDuplicates();
  seen_.sort();
  EXPECT_EQ(seen_.join(u' ').toStdString(),
            "fFileOpen frmAction frmAlarmBox frmDayView frmDingPeriod frmFindHolDay frmLapTime frmMsg12 frmPickDate "
            "frmRepeat frmSchedule frmSearchRecord frmSetSysDate frmSetSysTime frmSettings frmStopWatch");
}

TEST(ScreensOfWindows, ThatGrowKeepTheirPlace) {
  FormWorld w;
  int choice = 0;
  frmDeleteRecurrentEvent question(w.services, choice);
  question.SetCaptionForEdit();
  w.driver.Expect([](QWidget* dialog) {
    ExpectReadable(*dialog);
    dialog->close();
  });
  question.Run();

  frmProgress progress(w.services, u"Synchronizace s kalendářem Google"_qs);
  progress.Open(Qt::NonModal);
  const QString phase = u"Načítání do talníku, které trvá. "_qs;
  for (const int times : {1, 3, 40, 200}) {
    progress.Label1->setText(phase.repeated(times));
    progress.ShowStatus(QString(phase.repeated(times)).remove(u' '));
    ExpectReadable(progress);
  }
}

}  // namespace
}  // namespace talnik::test
