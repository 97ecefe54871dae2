// ours rules                     walks the rules that the other engines are given
// ours events FOLDER COUNT       writes the same events as events.csv for us and as events.ics for the others
// ours import STORE CSV          imports the file into a new store
// ours day STORE YYYY-MM-DD      lists a day of it

#include "../MadeEvents.h"
#include "Rules.h"
#include "platform/WholeFile.h"
#include "recurrence/RuleText.h"
#include "recurrence/RuleWalk.h"
#include "store/CsvExchange.h"
#include "store/Statements.h"
#include "store/Store.h"
#include "store/Template.h"

#include <QDate>

#include <cstdio>
#include <map>
#include <string>

namespace {

using namespace talnik;

bool WalkRules(const QStringList&) {
  peers::MeasureRules([](const char* published) {
    const QString text = u"RRULE:"_qs + QString::fromLatin1(published).replace(u';', u' ');
    const Date start = Date::FromParts(2024, 1, 1, 9).value();
    const WalkResult walk = WalkRule(RuleText::Read(text), {.start = start, .now = start});
    return walk.dates.size() + (walk.first ? 1 : 0);
  });
  return true;
}

QString IcsOfEvents(int count) {
  QString text = u"BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Talnik//bench\r\n"_qs;
  int number = 0;
  bench::ForEachEvent(count, [&](const ScheduleRecord& row) {
    text += u"BEGIN:VEVENT\r\nUID:"_qs + QString::number(number++) + u"@talnik\r\nDTSTAMP:20190101T000000Z\r\n"_qs;
    text += u"DTSTART:"_qs + MakeRuleStamp(*row.apptime) + u"\r\nDTEND:"_qs + MakeRuleStamp(*row.appdur);
    text += u"\r\nSUMMARY:"_qs + row.appointment + u"\r\n"_qs;
    if (row.alarm) text += u"BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:x\r\nTRIGGER:-PT10M\r\nEND:VALARM\r\n"_qs;
    text += u"END:VEVENT\r\n"_qs;
  });
  return text + u"END:VCALENDAR\r\n"_qs;
}

bool WriteEvents(const QStringList& words) {
  const QString& folder = words.at(0);
  const int count = words.at(1).toInt();
  QString reason;
  return WriteWholeFile(folder + u"/events.csv"_qs, bench::CsvOfEvents(count).toUtf8(), Readers::AsUsual, reason) &&
         WriteWholeFile(folder + u"/events.ics"_qs, IcsOfEvents(count).toUtf8(), Readers::AsUsual, reason);
}

bool Import(const QStringList& words) {
  QString reason;
  const auto bytes = ReadWholeFile(words.at(1), reason);
  if (!bytes || !CreateStore(words.at(0))) return false;
  Store store(words.at(0));
  const auto goOn = [](qint64, qint64) { return true; };
  return ImportCsv(store, QString::fromUtf8(*bytes), bench::kFirstEventDay, goOn).end == CsvEnd::Done;
}

bool ListDay(const QStringList& words) {
  const QDate day = QDate::fromString(words.at(1), Qt::ISODate);
  Store store(words.at(0));
  const auto list = [](const ScheduleRecord& row) {
    std::puts((DateText(*row.apptime) + u' ' + row.appointment).toUtf8().constData());
    return true;
  };
  return store.ForEach(statements::OfDay(*Date::FromParts(day.year(), day.month(), day.day())), list);
}

struct Job {
  int words;
  bool (*run)(const QStringList&);
};

const std::map<std::string, Job> kJobs = {
    {"rules", {0, WalkRules}}, {"events", {2, WriteEvents}}, {"import", {2, Import}}, {"day", {2, ListDay}}};

}  // namespace

int main(int argc, char** argv) {
  const auto job = kJobs.find(argc > 1 ? argv[1] : "");
  if (job == kJobs.end() || argc != job->second.words + 2) {
    std::fputs("ours rules | events FOLDER COUNT | import STORE CSV | day STORE YYYY-MM-DD\n", stderr);
    return 2;
  }
  QStringList words;
  for (int i = 2; i < argc; ++i) words += QString::fromLocal8Bit(argv[i]);
  return job->second.run(words) ? 0 : 1;
}
