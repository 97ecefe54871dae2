#pragma once

#include "calendar/MonthView.h"
#include "dates/MonthLines.h"

#include <QString>

#include <functional>

class QLabel;
class QPushButton;

namespace talnik {

class ListBox;
class Speech;

/// The month list at work: what it shows, when it counts the tasks of a day, and what is heard of it.
class MonthCalendar {
 public:
  struct Controls {
    ListBox* List1;
    QLabel* Label1;
    QPushButton* Command1;
  };

  /// What the list asks of its window.
  struct Host {
    std::function<int(const Date& day)> CountTasks;
    std::function<bool()> WindowIsVisible;
    std::function<QString()> Caption;
    std::function<void(bool hasTasks)> ShowTaskState;  ///< brings the menus up to date
    std::function<void(const Date& day)> ShowNameOfDay;
    std::function<Date()> Now;
    QString DayCue;  ///< the sound of a day that holds tasks
  };

  MonthCalendar(const Controls& controls, MonthView& view, const CalendarNames& names, Speech& speech, Host host);

  /// Puts today's month on show without a word.
  void Load(const Date& today);

  /// Moves the whole view to `date`; names the month when it has changed.
  void ShowDate(const Date& date);
  /// Speaks the selected day with its tasks and brings the window up to date. `playCue` allows the sound.
  void SetTodayState(bool playCue);
  /// The number of tasks of the selected day. Rebuilds SelectedDay.
  int TasksOfDay();

  void List1_Click();
  void List1_GotFocus();
  /// Reads the selected day behind `title`, with the month unless `shortly`. `playCue` allows the sound.
  void ReadDay(const QString& title, bool playCue, bool shortly = false);

  /// One month, or one year, on or back, on the same line where there is one.
  void MoveMonth(bool forward, bool byYear);
  /// Over the edge of the month onto the line beside it.
  void WalkOverEdge(bool forward);
  void MoveWeek(bool forward);
  /// To the next day (with `back` the one before) whose line holds `text`.
  void FindWeekDay(const QString& text, bool back);
  /// To the line of this index; nothing moves outside the month.
  void SelectLine(int index);
  void GoToEaster(bool next);

  void SayLine();
  void SayLineAndMonth();
  void SayMonthAndLine();

  MonthView& View() { return view_; }
  ListBox* List() const { return controls_.List1; }
  Date Now() const { return host_.Now(); }
  void Refuse();

 private:
  QString Line() const;
  QString Month() const;
  void ShowDayOfMonth(int day);
  void SayMonthIfChanged(const QString& before);
  /// Counts and shows the count on the button.
  int ShowTasks();
  /// Counts, shows the count on the button, plays the cue, and gives the words for it.
  QString TaskWords(bool playCue);

  Controls controls_;
  MonthView& view_;
  const CalendarNames& names_;
  Speech& speech_;
  Host host_;
};

}  // namespace talnik
