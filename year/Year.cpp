#include "Year.h"

#include "editor/SaveRecord.h"
#include "recurrence/RecurrPopulate.h"
#include "store/Recordset.h"
#include "store/Statements.h"
#include "store/Text.h"

#include <QDir>
#include <QLineEdit>
#include <QPixmapCache>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextStream>

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>

namespace talnik::soak {

namespace {

constexpr Moment kMinute = 60;
constexpr Moment kHour = 3600;
constexpr int kSeries = 6;
/// Records lie on whole five minutes, so that some share their moment.
constexpr Moment kGrid = 5 * kMinute;

Date AsDate(Moment moment) {
  return *Date::FromSeconds(moment + 25569 * kDay);
}

/// A time that the user types into the two fields of the window in front.
void TypeTime(QWidget& window, const QString& time, const char* button) {
  window.findChild<QLineEdit*>(u"Text1(0)"_qs)->setText(time.section(u':', 0, 0));
  window.findChild<QLineEdit*>(u"Text1(1)"_qs)->setText(time.section(u':', 1, 1));
  window.findChild<QPushButton*>(QString::fromLatin1(button))->click();
}

}  // namespace

Held HeldNow() {
  Held held;
  // Qt throws away its pictures of windows that are gone every half minute, which here is a day or two.
  QPixmapCache::clear();
  held.files = static_cast<qint64>(QDir(u"/proc/self/fd"_qs).entryList(QDir::Files | QDir::System).size());
  const struct mallinfo2 info = mallinfo2();
  held.inUse = static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
  QFile statm(u"/proc/self/statm"_qs);
  if (statm.open(QIODevice::ReadOnly)) {
    held.resident = statm.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
  }
  return held;
}

Year::Year(int days, int alarms, quint32 seed)
    : days_(days),
      alarms_(alarms),
      seed_(seed),
      random_(seed),
      // A month is one with a change of daylight time in it.
      start_(QDateTime(days < 200 ? QDate(2026, 3, 10) : QDate(2026, 1, 1), QTime(0, 0)).toSecsSinceEpoch()),
      now_(start_) {
  program_.User = [this](QWidget& window) { User(window); };
}

Moment Year::Local() const {
  const QDateTime clock = Clock();
  return clock.toSecsSinceEpoch() + clock.offsetFromUtc();
}

int Year::Day() const {
  return static_cast<int>((now_ - start_) / kDay);
}

/// Single records with an alarm some time before them, a few with a note of their own.
Entry Year::AnyRecord(Moment from, int days) {
  Entry entry{++number_, (from / kDay * kDay) + Below(days * 288) * kGrid};
  const Moment leads[] = {0, 5 * kMinute, 10 * kMinute, 15 * kMinute, kHour, kDay};
  entry.alarm = entry.start - leads[Below(std::size(leads))];
  entry.hasNote = OneIn(20);
  return entry;
}

/// Half of the records stand in the store from the beginning; they were entered out of their order.
void Year::Fill() {
  Store store(program_.StorePath());
  const Moment now = Local();
  constexpr std::size_t occurrences = 800;
  rules_.Reserve(static_cast<std::size_t>(alarms_) + kSeries * occurrences);
  AddSeries();
  store.InTransaction([&] {
    for (left_ = alarms_; left_ > alarms_ / 2; --left_) {
      const Entry entry = AnyRecord(now, days_);
      ScheduleRecord row;
      row.appointment = entry.Text();
      row.apptime = row.appdur = AsDate(entry.start);
      row.alarmtime = AsDate(entry.alarm);
      row.alarm = true;
      row.wav = entry.Note();
      row.status = StatusSingle;
      row.guid = NewGuidText();
      rules_.Add(entry, now);
      if (!store.Insert(row)) std::abort();
    }
    return true;
  });
}

/// Their alarms lie on seconds of their own: which row of one moment comes first is then no question.
void Year::AddSeries() {
  Store store(program_.StorePath());
  const SpawnTime time{.now = AsDate(Local()), .biases = {-60, 0, -60, false}};
  for (int number = 0; number < kSeries; ++number) {
    Entry root{++number_, Local() + (8 + Below(200)) * kHour};
    root.alarm = root.start - Below(30) * kMinute + 7 + number;
    root.role = Entry::Role::Root;
    root.days = 1 + Below(2) * 6;
    const auto rows = Recordset::Open(store, statements::All());
    const RecordFields fields{root.Text(), AsDate(root.start), {}, {}, AsDate(root.alarm)};
    const QString rule = u"RRULE:FREQ=DAILY INTERVAL=%1 "_qs.arg(root.days);
    if (!SaveNewRecord(store, *rows, fields, rule, time)) std::abort();
    rules_.Add(root, Local());
  }
}

bool Year::Run() {
  Fill();
  const int lastRun = days_ / 2;
  while (kept_ && Day() < days_) {
    endOfRun_ = Day() < lastRun ? now_ + (1 + Below(14)) * kDay : start_ + days_ * kDay;
    const bool isLast = Day() >= lastRun;
    const Moment warmAt = now_ + std::min<Moment>(30, days_ / 6) * kDay;
    BeginRun();
    while (kept_ && now_ < endOfRun_) {
      Hour();
      if (isLast && now_ >= warmAt && warm.files == 0) warm = HeldNow();
    }
    if (isLast) end = HeldNow();
    EndRun();
    ++counts["starts of the program"];
    // It is off for a while; what falls due then rings at the next start.
    if (OneIn(2)) now_ += Below(60) * kHour;
  }
  return kept_;
}

void Year::BeginRun() {
  const RunSettings settings{.watched = !OneIn(6), .dingPeriod = Below(4), .hidden = !OneIn(4)};
  // In the run that is measured everything goes on.
  const bool isLong = endOfRun_ - now_ > 20 * kDay;
  rules_.watched = settings.watched || isLong;
  constexpr std::array minutes = {60, 30, 15, 0};
  const int period = isLong ? 2 : settings.dingPeriod;
  rules_.dingMinutes = minutes.at(static_cast<std::size_t>(period));
  program_.Start({rules_.watched, period, settings.hidden}, Clock());
  rules_.Start(Local());
}

void Year::EndRun() {
  program_.End();
}

/// About an hour: something may happen in it, and the machine may be put to sleep.
void Year::Hour() {
  if (OneIn(6)) Happen();
  if (OneIn(15)) {
    now_ += Below(14 * 60) * kMinute;
    ++counts["sleeps of the machine"];
  }
  PassTime(now_ + kHour);
  Program::Settle();
}

/// Twice a second where something may be due, in longer steps between.
void Year::PassTime(Moment until) {
  while (kept_ && now_ < until) {
    const Moment wait = rules_.Next(Local()) - Local();
    if (wait > 2) {
      Step(std::min<Moment>(wait - 1 - Below(2), 1 + Below(180)));
    } else {
      Tick();
      Step(1);
    }
  }
}

void Year::Step(Moment seconds) {
  now_ += seconds;
  Tick();
}

void Year::Tick() {
  program_.SetClock(Clock());
  const Rules::Opens opens = rules_.Tick(Local());
  opened_ = false;
  program_.Tick();
  ++counts["ticks"];
  if (opened_) Program::Settle();
  if (opens != Rules::Opens::Nothing && opened_) rules_.EndOfBox(Local());
  Compare();
}

void Year::Happen() {
  struct Event {
    int oneIn;
    void (Year::*act)();
  };
  constexpr Event events[] = {{20, &Year::SetClock},
                              {4, &Year::ImportSome},
                              {3, &Year::EnterRecord},
                              {3, &Year::LookIntoEditor},
                              {6, &Year::StartCountdown}};
  program_.SetClock(Clock());
  for (const Event& event : events) {
    if (kept_ && OneIn(event.oneIn)) (this->*event.act)();
    if (kept_) Compare();
  }
}

/// Wrong by up to a day, or right again.
void Year::SetClock() {
  skew_ = skew_ != 0 && OneIn(2) ? 0 : Below(2 * 26 * 60) * kMinute - 26 * kHour;
  program_.SetClock(Clock());
  ++counts["times the clock was set"];
}

void Year::ImportSome() {
  const QString path = folder_.filePath(u"dovoz.csv"_qs);
  QFile file(path);
  if (left_ == 0 || !file.open(QIODevice::WriteOnly)) return;
  file.write("\"Titulek\"\r\n");
  const int due = left_ - alarms_ / 2 * (days_ - Day()) / days_;
  for (int count = std::min(left_, std::max(due, 0) + 1 + Below(5)); count > 0; --count, --left_) {
    Entry entry = AnyRecord(Local(), 40);
    entry.hasNote = false;
    const auto day = [](Moment moment) { return DayText(AsDate(moment)); };
    file.write(
        u"\"%1\",\"%2\",\"%3\",\"%1\",\"%2\",TRUE,\"%4\",\"%5\"\r\n"_qs
            .arg(day(entry.start), TimeOfDay(entry.start), entry.Text(), day(entry.alarm), TimeOfDay(entry.alarm))
            .toUtf8());
    rules_.Add(entry, Local());
    ++counts["records imported"];
  }
  file.close();
  program_.Import(path);
  rules_.Register();
}

/// A record of today, by the dialog and the editor.
void Year::EnterRecord() {
  const Moment start = (Local() / kGrid + 4 + Below(40)) * kGrid;
  if (left_ == 0 || start / kDay != Local() / kDay) return;
  program_.Choose("mnuToday");
  entered_ = Entry{++number_, start, start - 15 * kMinute};
  field_ = TimeOfDay(start);
  program_.Choose("mnuNewRecord");
  if (entered_) return (kept_ = false), void(std::fprintf(stderr, "no editor came\n"));
  ++counts["records entered"];
  --left_;
}

void Year::LookIntoEditor() {
  program_.Choose("mnuTaskAlarm");
}

void Year::StartCountdown() {
  if (rules_.CountdownRuns()) return;
  const int minutes = 1 + Below(3 * 60);
  field_ = u"%1:%2"_qs.arg(minutes / 60).arg(minutes % 60);
  program_.Choose("mnuTimeOut");
  rules_.SetCountdown(Local() + minutes * kMinute);
  ++counts["countdowns"];
}

void Year::User(QWidget& window) {
  const QString name = window.objectName();
  if (name == u"frmAlarmBox") return AnswerBox(window);
  if (name == u"frmSchedule") return AnswerEditor(window);
  if (name == u"frmSetSysTime") return TypeTime(window, field_, "cmdSet");
  const auto* message = window.findChild<QPlainTextEdit*>();
  const QString text = message ? message->toPlainText() : QString();
  const bool expected = text.startsWith(u"Počet importovaných") || text.contains(u" zasahuje do úkolu ");
  if (!expected) program_.Note(u"window "_qs + name + u": "_qs + text);
  Program::Press(window, Qt::Key_Return);
}

/// The text is written down, time goes by in the open box, and it is answered one way or another.
void Year::AnswerBox(QWidget& box) {
  opened_ = true;
  const bool isAlarm = box.windowTitle() == u"Alarm";
  auto* text = box.findChild<QPlainTextEdit*>(u"Text1"_qs);
  const QString time = text->toPlainText();
  if (isAlarm) Program::Press(box, Qt::Key_Return);
  program_.Note(isAlarm ? time + u' ' + text->toPlainText().section(u'\n', -1) : time);
  ++counts[isAlarm ? "alarms" : "ends of a countdown"];
  for (int ticks = OneIn(3) ? Below(6) : 0; ticks > 0; --ticks) {
    now_ += Below(5) == 0 ? Below(5) * kHour + Below(100) : Below(2);
    program_.SetClock(Clock());
    rules_.Tick(Local());
    program_.Tick();
  }
  const int answer = Below(20);
  if (answer == 0) {
    Program::Press(box, Qt::Key_F8);
    rules_.Delete();
    ++counts["alarms deleted"];
  } else if (answer <= 5 && isAlarm && rules_.NextIsSingle() && Local() % kMinute < 5) {
    Postpone(box);
  } else {
    Program::Press(box, Qt::Key_Escape);
    rules_.Close();
  }
}

void Year::Postpone(QWidget& box) {
  const int minutes = Below(12) * 5;
  field_ = u"0:%1"_qs.arg(minutes);
  Program::Press(box, Qt::Key_F9);
  rules_.Postpone(Local() + minutes * kMinute);
  ++counts["alarms postponed"];
}

void Year::AnswerEditor(QWidget& editor) {
  rules_.Visit(Local());
  ++counts["looks into the editor"];
  if (!entered_) return Program::Press(editor, Qt::Key_Escape);
  editor.findChild<QPlainTextEdit*>(u"Text1"_qs)->setPlainText(entered_->Text());
  editor.findChild<QPushButton*>(u"cmdOK"_qs)->click();
  rules_.Add(*std::exchange(entered_, {}), Local());
  rules_.Register();
}

void Year::Compare() {
  const QStringList heard = program_.Heard();
  const QStringList expected = rules_.Heard();
  if (!kept_ || heard == expected) return;
  kept_ = false;
  std::fprintf(stderr, "seed %u, %d days, %s by the clock:\n  heard     %s\n  expected  %s\n", seed_, days_,
               qPrintable(MomentText(Local())), qPrintable(heard.join(u" | "_qs)),
               qPrintable(expected.join(u" | "_qs)));
}

}  // namespace talnik::soak
