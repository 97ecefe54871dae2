#include "calendar/MonthCalendar.h"

#include "dates/Easter.h"
#include "shell/Speech.h"
#include "shell/TextControls.h"
#include "timetools/MonthList.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace talnik {
namespace {

QString TasksWord() {
  return QCoreApplication::translate("MonthCalendar", " úkolů");
}

QString ButtonCaption(int tasks) {
  return QCoreApplication::translate("MonthCalendar", "Úkoly (") + QString::number(tasks) + u')';
}

}  // namespace

MonthCalendar::MonthCalendar(const Controls& controls, MonthView& view, const CalendarNames& names, Speech& speech,
                             Host host)
    : controls_(controls), view_(view), names_(names), speech_(speech), host_(std::move(host)) {}

QString MonthCalendar::Line() const {
  return controls_.List1->Text();
}

QString MonthCalendar::Month() const {
  return controls_.Label1->text();
}

void MonthCalendar::Refuse() {
  speech_.Signal(Speech::Refused);
}

void MonthCalendar::Load(const Date& today) {
  view_.CurrentDate = today.DateValue();
  view_.SuppressClick = true;
  FillMonthList(controls_.List1, controls_.Label1, view_.CurrentDate, names_);
  view_.SuppressClick = false;
  ShowTasks();
  host_.ShowNameOfDay(view_.SelectedDay);
}

int MonthCalendar::TasksOfDay() {
  const auto day = SelectedDate(controls_.List1, view_.CurrentDate);
  if (!day) return 0;
  view_.SelectedDay = *day;
  return host_.CountTasks(*day);
}

int MonthCalendar::ShowTasks() {
  const int tasks = TasksOfDay();
  controls_.Command1->setText(ButtonCaption(tasks));
  return tasks;
}

QString MonthCalendar::TaskWords(bool playCue) {
  const int tasks = ShowTasks();
  if (tasks == 0) return QString();
  if (playCue) speech_.PlaySoundWait(host_.DayCue);
  return u' ' + QString::number(tasks) + TasksWord();
}

void MonthCalendar::ShowDate(const Date& date) {
  view_.CurrentDate = date;
  if (Month() == MonthTitle(date, names_)) return ShowDayOfMonth(date.Day());
  view_.SuppressClick = true;
  FillMonthList(controls_.List1, controls_.Label1, date, names_);
  view_.SuppressClick = false;

  const int tasks = ShowTasks();
  host_.ShowNameOfDay(view_.SelectedDay);
  host_.ShowTaskState(tasks > 0);
  QString text = Line() + u' ' + Month();
  if (tasks > 0) {
    speech_.PlaySoundWait(host_.DayCue);
    text += u"  "_qs + QString::number(tasks) + u' ' + TasksWord();
  }
  speech_.SayPart(0, text);
}

/// A month that stays is not built again: the list's Click speaks the day and shows what goes with it.
void MonthCalendar::ShowDayOfMonth(int day) {
  if (controls_.List1->ListIndex() == day - 1) return List1_Click();
  controls_.List1->SetListIndex(day - 1);
}

void MonthCalendar::SetTodayState(bool playCue) {
  if (host_.WindowIsVisible()) {
    const QString words = TaskWords(playCue && !view_.SilentSync);
    if (!view_.SilentSync) speech_.Say(Line() + words);
    host_.ShowTaskState(!words.isEmpty());
  } else {
    host_.ShowTaskState(ShowTasks() > 0);
  }
  host_.ShowNameOfDay(view_.SelectedDay);
}

void MonthCalendar::List1_Click() {
  if (view_.SuppressClick) return;
  view_.SkipFocusSpeech = true;
  SetTodayState(true);
}

void MonthCalendar::List1_GotFocus() {
  if (std::exchange(view_.SkipFocusSpeech, false)) return;
  const bool shortly = std::exchange(view_.ShownByHotKey, false);
  const QString title = view_.TitleOnFocus && !shortly ? host_.Caption() : QString();
  if (host_.WindowIsVisible()) ReadDay(title, true, shortly);
  view_.TitleOnFocus = false;
}

void MonthCalendar::ReadDay(const QString& title, bool playCue, bool shortly) {
  const QString words = TaskWords(playCue);
  speech_.FocusRead(title, Line() + (shortly ? QString() : QString(u' ' + Month())) + words);
}

void MonthCalendar::MoveMonth(bool forward, bool byYear) {
  const auto move = forward ? NextMonth : PrevMonth;
  if (!move(controls_.List1, controls_.Label1, byYear, true, view_.CurrentDate, names_)) Refuse();
}

void MonthCalendar::WalkOverEdge(bool forward) {
  const auto move = forward ? NextMonth : PrevMonth;
  if (!move(controls_.List1, controls_.Label1, false, false, view_.CurrentDate, names_)) return Refuse();
  controls_.List1->SetListIndex(forward ? 0 : controls_.List1->ListCount() - 1);
}

void MonthCalendar::SayMonthIfChanged(const QString& before) {
  if (Month() != before) speech_.SayPart(0, Month());
}

void MonthCalendar::MoveWeek(bool forward) {
  const QString month = Month();
  if (const auto selected = SelectedDate(controls_.List1, view_.CurrentDate)) view_.CurrentDate = *selected;
  const auto moved = WeekJump(view_.CurrentDate, forward);
  if (!moved) return Refuse();
  ShowDate(*moved);
  SayLine();
  SayMonthIfChanged(month);
}

void MonthCalendar::FindWeekDay(const QString& text, bool back) {
  const QString month = Month();
  const Date kept = view_.SelectedDay;
  if (talnik::FindWeekDay(controls_.List1, controls_.Label1, text, back, view_.CurrentDate, names_)) {
    SayMonthIfChanged(month);
  } else {
    ShowDate(kept);
  }
}

void MonthCalendar::SelectLine(int index) {
  if (index >= 0 && index < controls_.List1->ListCount()) controls_.List1->SetListIndex(index);
}

void MonthCalendar::GoToEaster(bool next) {
  const Date day = view_.SelectedDay;
  const int year = day.Year();
  Date easter = EasterDate(QString::number(year));
  if (next && easter <= day) easter = EasterDate(QString::number(year + 1));
  if (!next && easter >= day) easter = EasterDate(QString::number(year - 1));
  // Serial 0 stands for a year that is none.
  if (easter == Date()) return Refuse();
  ShowDate(easter);
}

void MonthCalendar::SayLine() {
  speech_.Say(Line());
}

void MonthCalendar::SayLineAndMonth() {
  speech_.Say(Line() + u' ' + Month());
}

void MonthCalendar::SayMonthAndLine() {
  speech_.Say(Month() + u' ' + Line());
}

}  // namespace talnik
