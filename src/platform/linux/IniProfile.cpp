#include "platform/linux/IniProfile.h"

namespace talnik {

namespace {

constexpr qsizetype LongestValue = 1023;

}  // namespace

std::optional<QString> IniProfile::Text(const QString& path, const QString& section, const QString& key) const {
  std::optional<QString> text = file_.Read(path).Value(section, key);
  if (text && text->size() > LongestValue) {
    const bool halves = text->at(LongestValue - 1).isHighSurrogate();
    text->truncate(LongestValue - (halves ? 1 : 0));
  }
  return text;
}

bool IniProfile::SectionExists(const QString& path, const QString& section) const {
  return file_.Read(path).HasKeys(section);
}

bool IniProfile::Write(const QString& path, const QList<Entry>& entries) {
  IniText text = file_.Read(path);
  for (const Entry& entry : entries) {
    if (entry.text) {
      text.Set(entry.section, entry.key, *entry.text);
    } else {
      text.Remove(entry.section, entry.key);
    }
  }
  return file_.Replace(path, text);
}

}  // namespace talnik
