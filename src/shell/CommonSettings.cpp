#include "shell/CommonSettings.h"

#include <QLoggingCategory>

#include <limits>

namespace talnik {
namespace {

Q_LOGGING_CATEGORY(commonTrace, "talnik.trace", QtWarningMsg)

const QString GenerationSuffix = u"1"_qs;

std::optional<quint32> NumberOf(const QVariant& value) {
  bool ok = false;
  const quint32 number = value.toUInt(&ok);
  return ok ? std::optional(number) : std::nullopt;
}

/// Colours are stored as 0x00BBGGRR. What is no such colour leaves the one in force.
void ReadColor(const Registry& registry, const QString& name, QColor& color) {
  const auto stored = NumberOf(GetRegistryValue(registry, CommonKey(), QString(), name, QVariant()));
  if (!stored || *stored > 0xFFFFFF) return;
  color = QColor(static_cast<int>(*stored & 0xFF), static_cast<int>(*stored >> 8 & 0xFF),
                 static_cast<int>(*stored >> 16 & 0xFF));
}

void ReadMenuSize(const Registry& registry, int& points) {
  constexpr qint64 DefaultStep = 2;
  const auto stored = NumberOf(GetRegistryValue(registry, CommonKey(), QString(), u"MenuSize"_qs, QVariant()));
  const qint64 read = (stored ? qint64{*stored} + 1 : DefaultStep + 1) * 10;
  if (read <= std::numeric_limits<qint16>::max()) points = static_cast<int>(read);
}

QString JoinKey(const QString& key, const QString& subKey) {
  if (subKey.isEmpty() || key.endsWith(u'\\')) return key + subKey;
  return key + u'\\' + subKey;
}

}  // namespace

QString CommonSettings::FamilyFolderWithSlash() const {
  return Path.endsWith(u'/') || Path.endsWith(u'\\') ? Path : Path + u'/';
}

QString CommonSettings::SoundPath(const QString& name) const {
  return FamilyFolderWithSlash() + u"sound/"_qs + name;
}

QString CommonKey() {
  return u"Software\\Quenta\\Common"_qs + GenerationSuffix;
}

CommonSettings InitCommonSettings(const Registry& registry, const QString& installedFolder) {
  CommonSettings settings;
  ReadColor(registry, u"ForeColor"_qs, settings.ForeColor);
  ReadColor(registry, u"BackColor"_qs, settings.BackColor);
  ReadMenuLook(registry, settings);
  qCDebug(commonTrace).noquote() << u"common. "_qs + CommonKey();
  const auto text = [&registry](const QString& name, const QString& fallback) {
    return GetRegistryValue(registry, CommonKey(), QString(), name, fallback).toString();
  };
  settings.Path = text(u"Path"_qs, QString());
  if (settings.Path.isEmpty()) settings.Path = installedFolder;
  // The suffix goes to every dot of the path, those of its folders too: the programs of a generation lie so.
  settings.HelpViewer = settings.FamilyFolderWithSlash() + text(u"HelpViewerPath"_qs, u"pagetext/pagetext.exe"_qs);
  settings.HelpViewer.replace(u'.', GenerationSuffix + u'.');
  return settings;
}

void ReadMenuLook(const Registry& registry, CommonSettings& settings) {
  ReadColor(registry, u"ForeMenuColor"_qs, settings.ForeMenuColor);
  ReadColor(registry, u"BackMenuColor"_qs, settings.BackMenuColor);
  ReadMenuSize(registry, settings.MenuSize);
}

QVariant GetRegistryValue(const Registry& registry, const QString& key, const QString& subKey, const QString& name,
                          const QVariant& fallback) {
  const QVariant value = registry.Value(JoinKey(key, subKey), name);
  return value.isValid() ? value : fallback;
}

void SaveRegistryValue(Registry& registry, const QString& key, const QString& subKey, const QString& name,
                       const QString& text) {
  registry.SetText(JoinKey(key, subKey), name, text);
}

void DeleteRegistryValue(Registry& registry, const QString& key, const QString& name) {
  registry.Remove(key, name);
}

QString TakeSelectedFile(Registry& registry) {
  const QString name = u"SelectedFile"_qs;
  QString path = GetRegistryValue(registry, CommonKey(), QString(), name, QString()).toString();
  SaveRegistryValue(registry, CommonKey(), QString(), name, QString());
  return path;
}

}  // namespace talnik
