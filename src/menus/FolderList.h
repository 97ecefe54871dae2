#pragma once

#include "platform/Folders.h"

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <vector>

namespace talnik {

/// Which file names a list shows: masks such as "*.wav", several of them separated by ";". "*.*" and no mask at all
/// show every file.
class NameFilter {
 public:
  explicit NameFilter(const QString& masks = QString());
  bool Matches(const QString& name) const;

 private:
  QStringList endings_;                    ///< of masks such as "*.wav"
  std::vector<QRegularExpression> masks_;  ///< all others
};

/// The lines of a folder's list: folders first, then the files that the filter shows, both in Czech order.
QList<Folders::Entry> FolderList(const QList<Folders::Entry>& entries, const NameFilter& filter);

/// "dopis.txt soubor", "Dokumenty složka"; what lies deeper, with its folder: "dopis.txt soubor ve složce Pošta".
QString SpokenEntry(const Folders::Entry& entry);

/// A folder as it is called: its own name, and "Kořen" for a root.
QString FolderName(const QString& path);

/// A place to begin from as it is called: "Domovská složka", "Kořen", "Disk ZÁLOHA".
QString PlaceName(const Folders::Place& place);

/// What a folder's list holds: "3 složky, 1 soubor", "prázdná složka".
QString SpokenCount(const QList<Folders::Entry>& entries);

/// The folder around a path; empty for the root.
QString FolderAbove(const QString& path);

/// The full path of a name in a folder.
QString PathIn(const QString& folder, const QString& name);

/// The path without what leads nowhere: doubled separators, "." and "..".
QString CleanPath(const QString& path);

/// The full path of what was typed: a name in `folder`, a path from it, from "/" or, behind "~", from `home`.
QString TypedPath(const QString& typed, const QString& folder, const QString& home);

/// The path with the extension of a mask "*.csv", unless it has it already; any other mask changes nothing.
QString WithExtension(const QString& path, const QString& mask);

/// The index of the next entry that begins with the letters, from `from` on and around the end; capital or small counts
/// for nothing, and accents only where some name has them as typed. With `inPaths` the
/// last part of a path counts. -1 when there is none.
int FindByLetters(const QList<Folders::Entry>& entries, const QString& letters, int from, bool inPaths = false);

/// True when the name holds the text somewhere; capital, small and accents count for nothing.
bool HoldsText(const QString& name, const QString& text);

}  // namespace talnik
