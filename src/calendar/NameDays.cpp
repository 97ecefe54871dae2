#include "calendar/NameDays.h"

#include "platform/CodePage.h"
#include "platform/WholeFile.h"

#include <QFile>

#include <algorithm>

namespace talnik {
namespace {

constexpr int DaysOfSlotMonth = 31;
constexpr qint64 LargestFile = 4 * 1024 * 1024;

}  // namespace

int NameDays::Slot(int month, int day) {
  if (month < 1 || month > 12 || day < 1 || day > DaysOfSlotMonth) return -1;
  return DaysOfSlotMonth * (month - 1) + day - 1;
}

QString NameDays::DayFromLine(int number) {
  const int month = (number - 1) / DaysOfSlotMonth + 1;
  return QString::number(number - DaysOfSlotMonth * (month - 1)) + u'.' + QString::number(month);
}

bool NameDays::LoadNames(const QString& path, const CodePage& codePage) {
  names_.clear();
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly) || file.size() > LargestFile) return false;
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) return false;
  QString text = codePage.Decode(bytes);
  text.remove(u'\r');
  if (text.endsWith(u'\n')) text.chop(1);
  if (!text.isEmpty()) names_ = text.split(u'\n');
  return !names_.isEmpty();
}

bool NameDays::SaveNames(const QString& path, const CodePage& codePage) const {
  if (names_.isEmpty()) return true;
  QString text;
  for (const QString& line : names_.first(std::min<qsizetype>(names_.size(), SlotCount))) text += line + u"\r\n"_qs;
  QString reason;
  return WriteWholeFile(path, codePage.Encode(text), Readers::UserAlone, reason);
}

QString NameDays::NameOfDay(int month, int day) const {
  return names_.value(Slot(month, day));
}

bool NameDays::SetNameOfDay(int month, int day, const QString& text) {
  const int slot = Slot(month, day);
  if (slot < 0 || slot >= names_.size()) return false;
  QString line = text;
  line.remove(u'\r').remove(u'\n');
  names_[slot] = line;
  return true;
}

std::optional<int> NameDays::FindName(const QString& text, int lastHit) const {
  const QString wanted = text.toUpper();
  for (int line = lastHit + 1; line <= std::min<qsizetype>(names_.size(), SlotCount); ++line) {
    if (names_[line - 1].toUpper().contains(wanted)) return line;
  }
  return {};
}

void NameSearch::Restart() {
  SearchText.clear();
  lastHit_ = 0;
}

NameSearch::Outcome NameSearch::Next(const NameDays& names) {
  if (names.IsEmpty()) return Outcome::NoNames;
  const auto line = names.FindName(SearchText, lastHit_);
  lastHit_ = line.value_or(NameDays::SlotCount);
  return line ? Outcome::Found : Outcome::End;
}

}  // namespace talnik
