#include "platform/linux/FileRegistry.h"

#include "platform/linux/UserFolders.h"

#include <utility>

namespace talnik {

namespace {

constexpr QStringView NumberPrefix = u"dword:";

/// The section of a key, whether its text ends in the separator of keys or not.
QString SectionOfKey(const QString& key) {
  return key.endsWith(u'\\') ? key.chopped(1) : key;
}

}  // namespace

FileRegistry::FileRegistry(QString path) : path_(std::move(path)) {
  const QString folder = ConfigHome();
  if (path_.isEmpty() && !folder.isEmpty()) path_ = folder + u"/Quenta/registry.ini";
}

QVariant FileRegistry::Value(const QString& key, const QString& name) const {
  if (path_.isEmpty()) return {};
  const std::optional<QString> text = file_.Read(path_).Value(SectionOfKey(key), name);
  if (!text) return {};
  if (!text->startsWith(NumberPrefix, Qt::CaseInsensitive)) return *text;
  bool isNumber = false;
  const quint32 number = text->sliced(NumberPrefix.size()).toUInt(&isNumber, 16);
  return isNumber ? QVariant(number) : QVariant();
}

bool FileRegistry::SetText(const QString& key, const QString& name, const QString& text) {
  if (path_.isEmpty()) return false;
  IniText values = file_.Read(path_);
  values.Set(SectionOfKey(key), name, text);
  return file_.Replace(path_, values);
}

bool FileRegistry::Remove(const QString& key, const QString& name) {
  if (path_.isEmpty()) return false;
  IniText values = file_.Read(path_);
  return values.Remove(SectionOfKey(key), name) && file_.Replace(path_, values);
}

}  // namespace talnik
