// What the exchange with a calendar costs: merges of 10,000 and 100,000 lines, from the file to the committed store,
// and the way out. A tenth of the lines are series, their exceptions and their deleted occurrences; half of the
// identities come from elsewhere. Exit code 0 only if what was promised is kept.

#include "Promises.h"
#include "dates/UtcStamp.h"
#include "platform/linux/LocaleCodePage.h"
#include "recurrence/RuleText.h"
#include "store/Store.h"
#include "store/Template.h"
#include "sync/ExchangeFile.h"
#include "sync/GoogleMerge.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <array>

namespace talnik {
namespace {

using namespace bench;

const Date kNow = *Date::FromParts(2024, 1, 1);
const ZoneBiases kPrague{-60, 0, -60, false};

QString Identity(QRandomGenerator& random) {
  const bool own = random.bounded(2U) == 0;
  QString id;
  while (id.size() < (own ? 32 : 26)) id += QString::number(random.bounded(own ? 16 : 32), own ? 16 : 32);
  return id;
}

QString At(const Date& moment, int minutes) {
  return DateText(*DateAdd(DateUnit::Minute, minutes, moment));
}

/// The merged calendar; `change` gives another one with the same identities.
QString Calendar(int lines, int change) {
  QRandomGenerator random(11);
  const QString rule = u"RRULE:FREQ=WEEKLY BYDAY=MO,TU,WE,TH,FR,SA,SU INTERVAL=1 COUNT=5"_qs;
  QString text;
  QString series;
  Date seriesStart;
  for (int i = 0; i < lines; ++i) {
    const QString title = u"Schůzka číslo %1;"_qs.arg(i + change);
    const Date start = *DateAdd(DateUnit::Minute, random.bounded(3650 * 1440) + change, kNow);
    const int kind = i % 30;
    if (kind == 0) {
      series = Identity(random);
      seriesStart = start;
      const QString stamp = MakeRuleStamp(start);
      text +=
          title + u";;15;DTSTART :"_qs + stamp + u" DTEND :"_qs + stamp + u' ' + rule + u';' + series + u";9\r\n"_qs;
      continue;
    }
    const QString rest =
        At(start, 0) + u';' + At(start, 60) + u';' + (i % 5 == 0 ? At(start, -10 - change) : QString()) + u';';
    if (kind == 1 || kind == 2) {
      const Date day = *DateAdd(DateUnit::Day, kind, seriesStart);
      const QString id = series + u'_' + ToUtcStamp(DateText(day), kPrague, kNow);
      text += title + rest + rule + u';' + id + (kind == 1 ? u";2\r\n"_qs : u";8\r\n"_qs);
    } else {
      text += title + rest + u';' + Identity(random) + u";0\r\n"_qs;
    }
  }
  return text;
}

class Bench {
 public:
  int Measure() {
    const Times few = TimesOf(10'000);
    const Times many = TimesOf(100'000);
    promises_.Below("10,000 lines, nothing changed", few.unchanged, 300, "ms");
    promises_.Below("10,000 lines, all changed", few.changed, 1000, "ms");
    promises_.Below("10,000 lines into an empty store", few.fresh, 1000, "ms");
    // n log n; a quarter more is left to a restless machine.
    constexpr double growth = 10 * 5.0 / 4 * 1.25;
    promises_.Below("100,000 lines, nothing changed", many.unchanged, few.unchanged * growth, "ms");
    promises_.Below("100,000 lines, all changed", many.changed, few.changed * growth, "ms");
    promises_.Below("100,000 lines into an empty store", many.fresh, few.fresh * growth, "ms");
    promises_.Below("export of 100,000 records", many.exported, 500, "ms");
    return promises_.ExitCode();
  }

 private:
  struct Times {
    double unchanged, changed, fresh, exported;
  };

  QString File(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

  void Write(const char* name, const QString& text) {
    QString reason;
    if (!WriteExchangeFile(File(name), text, codePage_, reason)) qFatal("no room for the measurement");
  }

  /// As the program does it once the agent has ended.
  void Merge(const char* name) {
    QString reason;
    const QString text = ReadExchangeFile(File(name), codePage_, reason).value();
    const bool kept = store_->InTransaction([&] {
      GoogleMerge merge(*store_, kPrague, kNow);
      ExchangeLines lines(text);
      while (!lines.AtEnd()) merge.ImportDataGoogle(lines.Next().toString());
      if (!merge.LinesTaken() || (merge.RebuildFlag() && !RebuildOccurrences(*store_, merge.ForRebuild())))
        return false;
      return merge.DeleteMissingEvents();
    });
    if (!kept) qFatal("not merged");
  }

  Times TimesOf(int lines) {
    const std::array<const char*, 2> files = {"GgData.txt", "other.txt"};
    for (int change = 0; change < 2; ++change)
      Write(files.at(static_cast<std::size_t>(change)), Calendar(lines, change));
    const QString path = folder_.filePath(u"talnik.MDB"_qs);
    Times times{};
    times.fresh = ShortestOf([&] { Merge(files[0]); },
                             [&] {
                               store_.reset();
                               QFile::remove(path);
                               CreateStore(path);
                               store_.emplace(path);
                             });
    Merge(files[0]);
    times.unchanged = ShortestOf([&] { Merge(files[0]); });
    std::size_t run = 0;
    times.changed = ShortestOf([&] { Merge(files.at(++run % 2)); });
    times.exported = ShortestOf([&] {
      qint64 count = 0;
      Write("LmData.txt", ExportDataForGoogle(*store_, count).value());
    });
    return times;
  }

  QTemporaryDir folder_;
  LocaleCodePage codePage_;
  std::optional<Store> store_;
  Promises promises_;
};

}  // namespace
}  // namespace talnik

int main() {
  talnik::bench::KeepMemory();
  return talnik::Bench().Measure();
}
