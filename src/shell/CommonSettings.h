#pragma once

#include "platform/Registry.h"

#include <QColor>
#include <QString>

namespace talnik {

/// The look and the paths that all programs of the family share, read once at the start.
struct CommonSettings {
  QColor ForeColor = QColor(255, 255, 0);
  QColor BackColor = QColor(0, 0, 0);
  QColor ForeMenuColor = QColor(0, 0, 0);
  QColor BackMenuColor = QColor(255, 255, 0);
  int MenuSize = 20;   ///< points of the menu font: 10 times the stored value plus 1; 20 until it is read
  QString Path;        ///< the family folder as stored
  QString HelpViewer;  ///< the help viewer's program, full path

  /// The family folder with one separator at its end: root of "sound/", help and sibling programs.
  QString FamilyFolderWithSlash() const;
  /// The full path of a file of the family's sound folder, by name ("space.wav").
  QString SoundPath(const QString& name) const;
};

/// The registry key of the common settings, "Software\Quenta\Common" with the family's suffix.
QString CommonKey();

/// Reads the common settings. `installedFolder` stands in for a family folder that the registry does not name.
CommonSettings InitCommonSettings(const Registry& registry, const QString& installedFolder);

/// Reads anew what the menus look like, which another program of the family may have changed.
void ReadMenuLook(const Registry& registry, CommonSettings& settings);

/// Key and subkey joined by one backslash, then the value; `fallback` when it cannot be read.
QVariant GetRegistryValue(const Registry& registry, const QString& key, const QString& subKey, const QString& name,
                          const QVariant& fallback);
void SaveRegistryValue(Registry& registry, const QString& key, const QString& subKey, const QString& name,
                       const QString& text);
void DeleteRegistryValue(Registry& registry, const QString& key, const QString& name);

/// The path that a file picker left, once: reading empties it.
QString TakeSelectedFile(Registry& registry);

}  // namespace talnik
