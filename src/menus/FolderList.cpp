#include "menus/FolderList.h"

#include "menus/CzechOrder.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace talnik {

namespace {

QString Words(const char* text) {
  return QCoreApplication::translate("FolderList", text);
}

/// A letter without its accent, in small.
char16_t BareLetter(QChar letter) {
  if (letter.unicode() > 0x7F) {
    const QString parts = letter.decomposition();
    if (!parts.isEmpty() && letter.decompositionTag() == QChar::Canonical) letter = BareLetter(parts[0]);
  }
  return letter.toLower().unicode();
}

/// The letters without accents, in small.
QString Bare(const QString& text) {
  QString bare;
  for (const QChar letter : text) {
    if (letter.category() != QChar::Mark_NonSpacing) bare += QChar(BareLetter(letter));
  }
  return bare;
}

/// The name itself of what lies deeper.
QStringView LastName(const QString& path) {
  return QStringView(path).sliced(path.lastIndexOf(u'/') + 1);
}

bool BeginsBare(QStringView name, const QString& bareLetters) {
  qsizetype matched = 0;
  for (qsizetype i = 0; matched < bareLetters.size(); ++i) {
    if (i >= name.size()) return false;
    if (name[i].category() == QChar::Mark_NonSpacing) continue;
    if (QChar(BareLetter(name[i])) != bareLetters[matched]) return false;
    ++matched;
  }
  return true;
}

void AppendInOrder(const QList<Folders::Entry>& entries, QList<Folders::Entry>& lines) {
  QList<QString> names;
  names.reserve(entries.size());
  for (const Folders::Entry& entry : entries) names << entry.name;
  for (const int index : CzechOrder().Of(names)) lines << entries[index];
}

/// "1 složka", "2 složky", "5 složek".
QString Counted(qsizetype count, const char* one, const char* few, const char* many) {
  const char* word = count == 1 ? one : count >= 2 && count <= 4 ? few : many;
  return QString::number(count) + u' ' + Words(word);
}

}  // namespace

NameFilter::NameFilter(const QString& masks) {
  for (const QString& part : masks.split(u';', Qt::SkipEmptyParts)) {
    const QString plain = part.trimmed();
    if (plain == u"*.*"_qs || plain == u"*"_qs) {
      masks_.clear();
      return;
    }
    const QRegularExpression mask(QRegularExpression::wildcardToRegularExpression(plain));
    masks_.push_back(mask.isValid() ? mask : QRegularExpression(QRegularExpression::escape(plain)));
    masks_.back().setPatternOptions(QRegularExpression::CaseInsensitiveOption);
  }
}

bool NameFilter::Matches(const QString& name) const {
  return masks_.empty() || std::any_of(masks_.begin(), masks_.end(),
                                       [&name](const QRegularExpression& mask) { return mask.match(name).hasMatch(); });
}

QList<Folders::Entry> FolderList(const QList<Folders::Entry>& entries, const NameFilter& filter) {
  QList<Folders::Entry> folders;
  QList<Folders::Entry> files;
  for (const Folders::Entry& entry : entries) {
    if (entry.isFolder) {
      folders << entry;
    } else if (filter.Matches(entry.name)) {
      files << entry;
    }
  }
  QList<Folders::Entry> lines;
  lines.reserve(folders.size() + files.size());
  AppendInOrder(folders, lines);
  AppendInOrder(files, lines);
  return lines;
}

QString SpokenEntry(const Folders::Entry& entry) {
  const qsizetype slash = entry.name.lastIndexOf(u'/');
  const QString spoken = entry.name.mid(slash + 1) + u' ' + (entry.isFolder ? Words("složka") : Words("soubor"));
  return slash < 0 ? spoken : QString(spoken + u' ' + Words("ve složce") + u' ' + entry.name.left(slash));
}

QString FolderName(const QString& path) {
  const QString name = path.section(u'/', -1);
  return name.isEmpty() ? Words("Kořen") : name;
}

QString PlaceName(const Folders::Place& place) {
  switch (place.kind) {
    case Folders::Place::Kind::Home:
      return Words("Domovská složka");
    case Folders::Place::Kind::Disk:
      return Words("Disk") + u' ' + FolderName(place.path);
    case Folders::Place::Kind::Network:
      return Words("Síťová složka") + u' ' + FolderName(place.path);
    case Folders::Place::Kind::Root:
      break;
  }
  return Words("Kořen");
}

QString SpokenCount(const QList<Folders::Entry>& entries) {
  const auto folders = std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return entry.isFolder; });
  const qsizetype files = entries.size() - folders;
  if (entries.isEmpty()) return Words("prázdná složka");
  QStringList counts;
  if (folders > 0) counts << Counted(folders, "složka", "složky", "složek");
  if (files > 0) counts << Counted(files, "soubor", "soubory", "souborů");
  return counts.join(u", "_qs);
}

QString FolderAbove(const QString& path) {
  const qsizetype slash = path.lastIndexOf(u'/');
  if (path.size() <= 1 || slash < 0) return QString();
  return slash == 0 ? u"/"_qs : path.left(slash);
}

QString PathIn(const QString& folder, const QString& name) {
  return folder.endsWith(u'/') ? QString(folder + name) : QString(folder + u'/' + name);
}

QString CleanPath(const QString& path) {
  QString clean = QDir::cleanPath(path);
  // Above the root there is the root.
  while (clean == u"/.."_qs || clean.startsWith(u"/../"_qs)) clean.remove(1, 3);
  return clean;
}

QString TypedPath(const QString& typed, const QString& folder, const QString& home) {
  QString path = typed;
  if (path == u"~"_qs || path.startsWith(u"~/"_qs)) path.replace(0, 1, home);
  return CleanPath(path.startsWith(u'/') ? path : PathIn(folder, path));
}

QString WithExtension(const QString& path, const QString& mask) {
  const QString extension = mask.mid(1);
  const bool isPlain =
      mask.startsWith(u"*."_qs) && extension.size() > 1 && !extension.contains(QRegularExpression(u"[*?;\\[]"_qs));
  return !isPlain || path.endsWith(extension, Qt::CaseInsensitive) ? path : QString(path + extension);
}

int FindByLetters(const QList<Folders::Entry>& entries, const QString& letters, int from) {
  const auto find = [&](auto begins) {
    const int count = static_cast<int>(entries.size());
    for (int i = 0; i < count; ++i) {
      const int at = (from + i) % count;
      if (begins(LastName(entries[at].name))) return at;
    }
    return -1;
  };
  const int exact = find([&](QStringView name) { return name.startsWith(letters, Qt::CaseInsensitive); });
  if (exact >= 0) return exact;
  return find([bare = Bare(letters)](QStringView name) { return BeginsBare(name, bare); });
}

bool HoldsText(const QString& name, const QString& text) {
  return Bare(name).contains(Bare(text));
}

}  // namespace talnik
