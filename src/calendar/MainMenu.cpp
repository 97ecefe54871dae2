#include "calendar/MainMenu.h"

#include "menus/OwnMenus.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMenuBar>
#include <QStringList>

namespace talnik {
namespace {

using State = MenuEntry::State;

constexpr MenuEntry kEntries[] = {
    {"mnuTalnik", QT_TRANSLATE_NOOP("MainMenu", "Talník "), "", State::Group},
    {"mnuImportGroup", QT_TRANSLATE_NOOP("MainMenu", "Import..."), "mnuTalnik", State::Group},
    {"mnuImport", QT_TRANSLATE_NOOP("MainMenu", "Soubor"), "mnuImportGroup", State::Ready},
    {"mnuExportGroup", QT_TRANSLATE_NOOP("MainMenu", "Export..."), "mnuTalnik", State::Group},
    {"mnuExport", QT_TRANSLATE_NOOP("MainMenu", "Soubor"), "mnuExportGroup", State::Ready},
    {"mnuGoogleSync", QT_TRANSLATE_NOOP("MainMenu", "Synchronizace s kalendářem Google"), "mnuTalnik", State::Ready},
    {"mnuSyncLog", QT_TRANSLATE_NOOP("MainMenu", "Výsledek poslední synchronizace"), "mnuTalnik", State::Ready},
    {"mnuSettings", QT_TRANSLATE_NOOP("MainMenu", "Nastavení programu"), "mnuTalnik", State::Ready},
    {"mnuSettingsAccount", QT_TRANSLATE_NOOP("MainMenu", "Nastavení účtu"), "mnuTalnik", State::Ready},
    {"mnuSetServer", QT_TRANSLATE_NOOP("MainMenu", "Nastavení prostředí"), "mnuTalnik", State::Ready},
    {"mnuDelSchedule", QT_TRANSLATE_NOOP("MainMenu", "Smazat talník"), "mnuTalnik", State::Ready},
    {"mnuSep0", "", "mnuTalnik", State::Separator},
    {"mnuHide", QT_TRANSLATE_NOOP("MainMenu", "Skrýt"), "mnuTalnik", State::Ready},
    {"mnuExit", QT_TRANSLATE_NOOP("MainMenu", "U&končit"), "mnuTalnik", State::Ready},
    {"mnuCalendar", QT_TRANSLATE_NOOP("MainMenu", "Kalendář"), "", State::Group},
    {"mnuDayForward", QT_TRANSLATE_NOOP("MainMenu", "Den další"), "mnuCalendar", State::Ready},
    {"mnuDayBack", QT_TRANSLATE_NOOP("MainMenu", "Den předchozí"), "mnuCalendar", State::Ready},
    {"mnuCalSep1", "", "mnuCalendar", State::Separator},
    {"mnuNextWeek", QT_TRANSLATE_NOOP("MainMenu", "Týden další"), "mnuCalendar", State::Ready},
    {"mnuPrevWeek", QT_TRANSLATE_NOOP("MainMenu", "Týden předchozí"), "mnuCalendar", State::Ready},
    {"mnuCalSep2", "", "mnuCalendar", State::Separator},
    {"mnuFirstDayInMonth", QT_TRANSLATE_NOOP("MainMenu", "První den v měsíci"), "mnuCalendar", State::Ready},
    {"mnuLastDayInMonth", QT_TRANSLATE_NOOP("MainMenu", "Poslední den v měsíci"), "mnuCalendar", State::Ready},
    {"mnuCalSep5", "", "mnuCalendar", State::Separator},
    {"mnuNexMonth", QT_TRANSLATE_NOOP("MainMenu", "Měsíc další"), "mnuCalendar", State::Ready},
    {"mnuPrevMonth", QT_TRANSLATE_NOOP("MainMenu", "Měsíc  předchozí"), "mnuCalendar", State::Ready},
    {"mnuCalSep3", "", "mnuCalendar", State::Separator},
    {"mnuNextYear", QT_TRANSLATE_NOOP("MainMenu", "Rok další"), "mnuCalendar", State::Ready},
    {"mnuPrevYear", QT_TRANSLATE_NOOP("MainMenu", "Rok  předchozí"), "mnuCalendar", State::Ready},
    {"mnuCalSep4", "", "mnuCalendar", State::Separator},
    {"mnuToday", QT_TRANSLATE_NOOP("MainMenu", "Dnes"), "mnuCalendar", State::Ready},
    {"mnuWeekDays", QT_TRANSLATE_NOOP("MainMenu", "Dny v týdnu"), "mnuCalendar", State::Group},
    {"mnuWeekDay_Monday", QT_TRANSLATE_NOOP("MainMenu", "Pondělí další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Monday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Pondělí předchozí"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Tuesday", QT_TRANSLATE_NOOP("MainMenu", "Úterý další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Tuesday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Úterý předchozí"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Wednesday", QT_TRANSLATE_NOOP("MainMenu", "Středa další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Wednesday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Středa předchozí"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Thursday", QT_TRANSLATE_NOOP("MainMenu", "Čtvrtek další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Thursday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Čtvrtek předchozí"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Friday", QT_TRANSLATE_NOOP("MainMenu", "Pátek další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Friday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Pátek předchozí "), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Saturday", QT_TRANSLATE_NOOP("MainMenu", "Sobota další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Saturday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Sobota předchozí "), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Sunday", QT_TRANSLATE_NOOP("MainMenu", "Neděle další"), "mnuWeekDays", State::Ready},
    {"mnuWeekDay_Sunday_Prev", QT_TRANSLATE_NOOP("MainMenu", "Neděle předchozí"), "mnuWeekDays", State::Ready},
    {"mnueaster", QT_TRANSLATE_NOOP("MainMenu", "Velikonoce další"), "mnuCalendar", State::Ready},
    {"mnuEasterPrev", QT_TRANSLATE_NOOP("MainMenu", "Velikonoce předchozí"), "mnuCalendar", State::Ready},
    {"mnuTimeCaption", QT_TRANSLATE_NOOP("MainMenu", "    Č&as    "), "", State::Group},
    {"mnuRaceTime", QT_TRANSLATE_NOOP("MainMenu", "Stopky"), "mnuTimeCaption", State::Ready},
    {"mnuTimeOut", QT_TRANSLATE_NOOP("MainMenu", "&Minutky"), "mnuTimeCaption", State::Ready},
    {"mnuAlarms", QT_TRANSLATE_NOOP("MainMenu", "&Alarmy"), "mnuTimeCaption", State::Group},
    {"mnuAnnounceTimeOut", QT_TRANSLATE_NOOP("MainMenu", "Ohlásit čas minutek"), "mnuAlarms", State::Ready},
    {"mnuTime", QT_TRANSLATE_NOOP("MainMenu", "&Ohlásit čas"), "mnuTimeCaption", State::Ready},
    {"mnuSetTime", QT_TRANSLATE_NOOP("MainMenu", "&Nastavit čas"), "mnuTimeCaption", State::Ready},
    {"mnuDingHour", QT_TRANSLATE_NOOP("MainMenu", "Oznamovat "), "mnuTimeCaption", State::Ready},
    {"mnuDate", QT_TRANSLATE_NOOP("MainMenu", "&Datum"), "", State::Group},
    {"mnuSetDate", QT_TRANSLATE_NOOP("MainMenu", "Přejít na &den"), "mnuDate", State::Ready},
    {"mnuHolFind", QT_TRANSLATE_NOOP("MainMenu", "&Hledej svátek"), "mnuDate", State::Ready},
    {"mnuHolFindNext", QT_TRANSLATE_NOOP("MainMenu", "Hledej další"), "mnuDate", State::Ready},
    {"mnuHolSave", QT_TRANSLATE_NOOP("MainMenu", "&Uložit svátek"), "mnuDate", State::Ready},
    {"mnuSetSysDate", QT_TRANSLATE_NOOP("MainMenu", "Nastavit datum"), "mnuDate", State::Ready},
    {"mnuInsertToClip", QT_TRANSLATE_NOOP("MainMenu", "Vlož datum do schránky"), "mnuDate", State::Ready},
    {"mnuEdit", QT_TRANSLATE_NOOP("MainMenu", "Ú&koly"), "", State::Group},
    {"mnuNewRecord", QT_TRANSLATE_NOOP("MainMenu", "&Nový"), "mnuEdit", State::Ready},
    {"mnuSearchRecord", QT_TRANSLATE_NOOP("MainMenu", "Vyhledat   CTRL + SHIFT + F"), "mnuEdit", State::Ready},
    {"mnuTaskToday", QT_TRANSLATE_NOOP("MainMenu", "&Vybraný den Enter"), "mnuEdit", State::Ready},
    {"mnuTaskTodayAfter", QT_TRANSLATE_NOOP("MainMenu", "Vybraný den a novější"), "mnuEdit", State::Ready},
    {"mnuTaskAll", QT_TRANSLATE_NOOP("MainMenu", "Všechny"), "mnuEdit", State::Ready},
    {"mnuTaskAlarm", QT_TRANSLATE_NOOP("MainMenu", "S alarmy"), "mnuEdit", State::Ready},
    {"mnuSpareTime", QT_TRANSLATE_NOOP("MainMenu", "Denní přehled Ctrl+Enter"), "mnuEdit", State::Ready},
    {"mnuDelTodayTasks", QT_TRANSLATE_NOOP("MainMenu", "Smazat úkoly na tento den"), "mnuEdit", State::Ready},
    // Test records, or new identities for records that a synchronisation knows, would harm a real diary.
    {"mnuGen100", QT_TRANSLATE_NOOP("MainMenu", "Gen100"), "mnuEdit", State::Hidden},
    {"mnuRefreshGUID", QT_TRANSLATE_NOOP("MainMenu", "Refresh GUID"), "mnuEdit", State::Hidden},
    {"mnuHelp", QT_TRANSLATE_NOOP("MainMenu", "Nápo&věda"), "", State::Group},
    {"mnuOpenHelp", QT_TRANSLATE_NOOP("MainMenu", "Otevři"), "mnuHelp", State::Ready},
    {"mnuHelpCheckUpdate", QT_TRANSLATE_NOOP("MainMenu", "Zkontrolovat aktualizace"), "mnuHelp", State::Ready},
    {"mnuAbout", QT_TRANSLATE_NOOP("MainMenu", "O programu"), "mnuHelp", State::Ready},
};

const QList<KeyCommand>& KeyCommands() {
  static const QList<KeyCommand> commands = {
      {"mnuNextWeek", {{Qt::Key_PageDown, true}}, Qt::NoModifier},
      {"mnuPrevWeek", {{Qt::Key_PageUp, true}}, Qt::NoModifier},
      {"mnuNexMonth", {{Qt::Key_Right, false}}, Qt::NoModifier},
      {"mnuPrevMonth", {{Qt::Key_Left, false}}, Qt::NoModifier},
      {"mnuNextYear", {{Qt::Key_Right, false}}, Qt::ControlModifier},
      {"mnuPrevYear", {{Qt::Key_Left, false}}, Qt::ControlModifier},
      {"mnuToday", {{Qt::Key_D, false}}, Qt::NoModifier},
      {"mnueaster", {{Qt::Key_V, false}}, Qt::NoModifier},
      {"mnuEasterPrev", {{Qt::Key_V, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Monday", {{Qt::Key_P, false}, {Qt::Key_O, false}}, Qt::NoModifier},
      {"mnuWeekDay_Monday_Prev", {{Qt::Key_P, false}, {Qt::Key_O, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Tuesday", {{Qt::Key_U, false}}, Qt::NoModifier},
      {"mnuWeekDay_Tuesday_Prev", {{Qt::Key_U, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Wednesday", {{Qt::Key_S, false}, {Qt::Key_T, false}}, Qt::NoModifier},
      {"mnuWeekDay_Wednesday_Prev", {{Qt::Key_S, false}, {Qt::Key_T, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Thursday", {{Qt::Key_C, false}}, Qt::NoModifier},
      {"mnuWeekDay_Thursday_Prev", {{Qt::Key_C, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Friday", {{Qt::Key_P, false}, {Qt::Key_A, false}}, Qt::NoModifier},
      {"mnuWeekDay_Friday_Prev", {{Qt::Key_P, false}, {Qt::Key_A, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Saturday", {{Qt::Key_S, false}, {Qt::Key_O, false}}, Qt::NoModifier},
      {"mnuWeekDay_Saturday_Prev", {{Qt::Key_S, false}, {Qt::Key_O, false}}, Qt::ShiftModifier},
      {"mnuWeekDay_Sunday", {{Qt::Key_N, false}}, Qt::NoModifier},
      {"mnuWeekDay_Sunday_Prev", {{Qt::Key_N, false}}, Qt::ShiftModifier},
  };
  return commands;
}

/// Commands that do what a key does, but are not carried out by it, and commands with a key of the whole window.
constexpr std::pair<const char*, Qt::Key> kOtherKeys[] = {{"mnuDayForward", Qt::Key_Down},
                                                          {"mnuDayBack", Qt::Key_Up},
                                                          {"mnuFirstDayInMonth", Qt::Key_Home},
                                                          {"mnuLastDayInMonth", Qt::Key_End},
                                                          {"mnuOpenHelp", Qt::Key_F1}};

QString KeyName(int key) {
  switch (key) {
    case Qt::Key_Up:
      return QCoreApplication::translate("MainMenu", "Šipka nahoru");
    case Qt::Key_Down:
      return QCoreApplication::translate("MainMenu", "Šipka dolů");
    case Qt::Key_Left:
      return QCoreApplication::translate("MainMenu", "Šipka vlevo");
    case Qt::Key_Right:
      return QCoreApplication::translate("MainMenu", "Šipka vpravo");
    case Qt::Key_PageUp:
      return u"PageUp"_qs;
    case Qt::Key_PageDown:
      return u"PageDown"_qs;
    default:
      return QKeySequence(key).toString();
  }
}

MenuItem::Kind KindOf(State state) {
  if (state == State::Group) return MenuItem::Kind::Group;
  return state == State::Separator ? MenuItem::Kind::Separator : MenuItem::Kind::Command;
}

}  // namespace

const QList<MenuEntry>& MainMenuEntries() {
  static const QList<MenuEntry> entries(std::begin(kEntries), std::end(kEntries));
  return entries;
}

QHash<QString, QAction*> BuildMainMenu(QMenuBar& bar, const std::function<void(const QString& name)>& run) {
  QList<MenuItem> items;
  for (const MenuEntry& entry : MainMenuEntries()) {
    QString caption = *entry.caption ? QCoreApplication::translate("MainMenu", entry.caption) : QString();
    const QString key = ShownKey(QString::fromLatin1(entry.name));
    if (!key.isEmpty()) caption += u'\t' + key;
    items << MenuItem{QString::fromLatin1(entry.name), caption, QString::fromLatin1(entry.parent), KindOf(entry.state)};
  }
  QHash<QString, QAction*> actions = BuildMenus(bar, items);
  for (const MenuEntry& entry : MainMenuEntries()) {
    const QString name = QString::fromLatin1(entry.name);
    QAction* action = actions.value(name);
    if (entry.state == State::Hidden) action->setVisible(false);
    if (entry.state != State::Ready) continue;
    QObject::connect(action, &QAction::triggered, &bar, [run, name] { run(name); });
  }
  return actions;
}

QString ShownKey(const QString& name) {
  for (const auto& [command, key] : kOtherKeys) {
    if (name == QLatin1String(command)) return KeyName(key);
  }
  const KeyCommand* command = FindKeyCommand(name);
  if (!command) return QString();
  QStringList keys;
  for (const KeyCommand::Stroke& stroke : command->strokes) keys << KeyName(stroke.key);
  // Of two letters the last one decides.
  if (command->shift == Qt::ShiftModifier) keys.last().prepend(u"Shift+"_qs);
  if (command->shift == Qt::ControlModifier) keys.last().prepend(u"Ctrl+"_qs);
  return keys.join(u' ');
}

const KeyCommand* FindKeyCommand(const QString& name) {
  for (const KeyCommand& command : KeyCommands()) {
    if (name == QLatin1String(command.name)) return &command;
  }
  return nullptr;
}

}  // namespace talnik
