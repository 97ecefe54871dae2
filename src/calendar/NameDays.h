#pragma once

#include "dates/Date.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace talnik {

class CodePage;

/// The names of the days: a line for each slot of twelve months of 31 days, counted from 0.
class NameDays {
 public:
  static constexpr int SlotCount = 372;

  /// The slot of a day; -1 for a day that is none.
  static int Slot(int month, int day);
  /// "d.m" of a line counted from 1.
  static QString DayFromLine(int number);

  /// Reads the file. False leaves no names: it is missing, unreadable or larger than any file of names.
  bool LoadNames(const QString& path, const CodePage& codePage);
  /// Replaces the file by what is in memory. Without names there is nothing to write and the file stays. False when
  /// the old file had to stay although there was something to write.
  bool SaveNames(const QString& path, const CodePage& codePage) const;

  bool IsEmpty() const { return names_.isEmpty(); }
  /// Empty where there is no such line.
  QString NameOfDay(int month, int day) const;
  /// Stores a text without its line breaks; false where there is no such line.
  bool SetNameOfDay(int month, int day, const QString& text);

  /// The first line behind `lastHit` that holds `text`, whatever the case; both counted from 1.
  std::optional<int> FindName(const QString& text, int lastHit) const;

 private:
  QStringList names_;
};

/// A search through the names that goes on where the last one stopped.
class NameSearch {
 public:
  enum class Outcome { NoNames, Found, End };

  QString SearchText;

  void Restart();
  /// Searches on. On Found, LastHit is the line.
  Outcome Next(const NameDays& names);
  int LastHit() const { return lastHit_; }

 private:
  int lastHit_ = 0;
};

}  // namespace talnik
