// The exchange with a calendar, from the file to the committed store and the way out.

#include "../MadeEvents.h"
#include "../RawRows.h"
#include "Subjects.h"
#include "platform/linux/LocaleCodePage.h"
#include "store/Store.h"
#include "store/Template.h"
#include "sync/ExchangeFile.h"
#include "sync/GoogleMerge.h"

#include <QFile>

#include <array>
#include <optional>

namespace talnik::bench {
namespace {

constexpr int kMostLines = 100'000;

/// The calendar's lines; `change` gives another one with the same identities.
QString LinesOfEvents(int count, int change) {
  QString text;
  int number = 0;
  ForEachEvent(count, [&](const ScheduleRecord& row) {
    const Date start = *DateAdd(DateUnit::Minute, change, *row.apptime);
    const Date end = *DateAdd(DateUnit::Minute, change, *row.appdur);
    const QString id = QStringLiteral("%1").arg(number++, 32, 16, QChar(u'0'));
    text += row.appointment + u';' + DateText(start) + u';' + DateText(end) + u';';
    text += (row.alarm ? DateText(start) : QString()) + u";;"_qs + id + u";0\r\n"_qs;
  });
  return text;
}

class Calendar {
 public:
  Calendar(const GrowthStores& stores, int lines)
      : files_{stores.Scratch("GgData.txt"), stores.Scratch("other.txt")},
        sent_(stores.Scratch("LmData.txt")),
        path_(stores.Scratch("merge.MDB")) {
    Write(files_[0], LinesOfEvents(lines, 0));
    Write(files_[1], LinesOfEvents(lines, 1));
  }

  void MakeEmpty() {
    store_.reset();
    QFile::remove(path_);
    CreateStore(path_);
    store_.emplace(path_);
  }

  /// As the program does it once the agent has ended.
  void Merge(std::size_t file) {
    QString reason;
    const QString text = ReadExchangeFile(files_.at(file), codePage_, reason).value();
    const bool kept = store_->InTransaction([&] {
      GoogleMerge merge(*store_, ZoneBiases{-60, 0, -60, false}, kFirstEventDay);
      ExchangeLines lines(text);
      while (!lines.AtEnd()) merge.ImportDataGoogle(lines.Next().toString());
      return merge.LinesTaken() && merge.DeleteMissingEvents();
    });
    Check(kept, "merge");
  }

  void Export() {
    qint64 count = 0;
    Write(sent_, ExportDataForGoogle(*store_, count).value());
  }

 private:
  void Write(const QString& path, const QString& text) {
    QString reason;
    Check(WriteExchangeFile(path, text, codePage_, reason), "write");
  }

  std::array<QString, 2> files_;
  QString sent_;
  QString path_;
  LocaleCodePage codePage_;
  std::optional<Store> store_;
};

}  // namespace

void MeasureMerge(GrowthTable& table, GrowthStores& stores) {
  const auto merged = [&stores](double (*measure)(Calendar&)) {
    return [&stores, measure](int rows) {
      Calendar calendar(stores, rows);
      calendar.MakeEmpty();
      calendar.Merge(0);
      return measure(calendar);
    };
  };
  table.Measure({"calendar merged into an empty store", Grows::WithRows, 1000, merged([](Calendar& calendar) {
                   return ShortestOf([&] { calendar.Merge(0); }, [&] { calendar.MakeEmpty(); });
                 }),
                 kMostLines});
  table.Measure({"calendar merged, nothing changed", Grows::WithRows, 300,
                 merged([](Calendar& calendar) { return ShortestOf([&] { calendar.Merge(0); }); }), kMostLines});
  table.Measure({"calendar merged, all changed", Grows::WithRows, 1000, merged([](Calendar& calendar) {
                   std::size_t run = 0;
                   return ShortestOf([&] { calendar.Merge(++run % 2); });
                 }),
                 kMostLines});
  table.Measure({"exported for the calendar", Grows::WithRows, 50,
                 merged([](Calendar& calendar) { return ShortestOf([&] { calendar.Export(); }); }), kMostLines});
}

}  // namespace talnik::bench
