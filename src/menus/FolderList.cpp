#include "menus/FolderList.h"

#include "menus/CzechOrder.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <array>

namespace talnik {

namespace {

char16_t WithoutAccent(QChar letter) {
  const QString parts = letter.decompositionTag() == QChar::Canonical ? letter.decomposition() : QString();
  return parts.isEmpty() ? letter.toLower().unicode() : WithoutAccent(parts[0]);
}

/// A letter without its accent, in small.
char16_t BareLetter(QChar letter) {
  // The letters of Europe are asked for a hundred thousand times at one key.
  constexpr std::size_t usual = 0x250;
  static const std::array<char16_t, usual> bare = [] {
    std::array<char16_t, usual> letters{};
    for (std::size_t i = 0; i < usual; ++i) letters.at(i) = WithoutAccent(QChar(static_cast<char16_t>(i)));
    return letters;
  }();
  return letter.unicode() < usual ? bare[letter.unicode()] : WithoutAccent(letter);
}

bool IsAccent(QChar letter) {
  return letter.unicode() >= 0x300 && letter.category() == QChar::Mark_NonSpacing;
}

/// The letters without accents, in small.
QString Bare(const QString& text) {
  QString bare;
  for (const QChar letter : text) {
    if (!IsAccent(letter)) bare += QChar(BareLetter(letter));
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
    if (IsAccent(name[i])) continue;
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
  return QString::number(count) + u' ' + QCoreApplication::translate("FolderList", word);
}

}  // namespace

NameFilter::NameFilter(const QString& masks) {
  static const QRegularExpression wildcard(u"[*?\\[]"_qs);
  for (const QString& part : masks.split(u';', Qt::SkipEmptyParts)) {
    const QString mask = part.trimmed();
    if (mask == u"*.*"_qs || mask == u"*"_qs) {
      *this = NameFilter();
      return;
    }
    if (mask.startsWith(u'*') && !QStringView(mask).sliced(1).contains(wildcard)) {
      endings_ << mask.mid(1);
      continue;
    }
    const QRegularExpression whole(QRegularExpression::wildcardToRegularExpression(mask));
    masks_.push_back(whole.isValid() ? whole : QRegularExpression(QRegularExpression::escape(mask)));
    masks_.back().setPatternOptions(QRegularExpression::CaseInsensitiveOption);
  }
}

bool NameFilter::Matches(const QString& name) const {
  const auto ends = [&name](const QString& ending) { return name.endsWith(ending, Qt::CaseInsensitive); };
  const auto fits = [&name](const QRegularExpression& mask) { return mask.match(name).hasMatch(); };
  if (endings_.isEmpty() && masks_.empty()) return true;
  return std::any_of(endings_.begin(), endings_.end(), ends) || std::any_of(masks_.begin(), masks_.end(), fits);
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
  const QString spoken = entry.name.mid(slash + 1) + u' ' +
                         (entry.isFolder ? QCoreApplication::translate("FolderList", "složka")
                                         : QCoreApplication::translate("FolderList", "soubor"));
  return slash < 0 ? spoken
                   : QString(spoken + u' ' + QCoreApplication::translate("FolderList", "ve složce") + u' ' +
                             entry.name.left(slash));
}

QString FolderName(const QString& path) {
  const QString name = path.section(u'/', -1);
  return name.isEmpty() ? QCoreApplication::translate("FolderList", "Kořen") : name;
}

QString PlaceName(const Folders::Place& place) {
  switch (place.kind) {
    case Folders::Place::Kind::Home:
      return QCoreApplication::translate("FolderList", "Domovská složka");
    case Folders::Place::Kind::Disk:
      return QCoreApplication::translate("FolderList", "Disk") + u' ' + FolderName(place.path);
    case Folders::Place::Kind::Network:
      return QCoreApplication::translate("FolderList", "Síťová složka") + u' ' + FolderName(place.path);
    case Folders::Place::Kind::Root:
      break;
  }
  return QCoreApplication::translate("FolderList", "Kořen");
}

QString SpokenCount(const QList<Folders::Entry>& entries) {
  const auto folders = std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return entry.isFolder; });
  const qsizetype files = entries.size() - folders;
  if (entries.isEmpty()) return QCoreApplication::translate("FolderList", "prázdná složka");
  QStringList counts;
  if (folders > 0)
    counts << Counted(folders, QT_TRANSLATE_NOOP("FolderList", "složka"), QT_TRANSLATE_NOOP("FolderList", "složky"),
                      QT_TRANSLATE_NOOP("FolderList", "složek"));
  if (files > 0)
    counts << Counted(files, QT_TRANSLATE_NOOP("FolderList", "soubor"), QT_TRANSLATE_NOOP("FolderList", "soubory"),
                      QT_TRANSLATE_NOOP("FolderList", "souborů"));
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

int FindByLetters(const QList<Folders::Entry>& entries, const QString& letters, int from, bool inPaths) {
  const QString bare = Bare(letters);
  const int count = static_cast<int>(entries.size());
  int withOtherAccents = -1;
  for (int i = 0; i < count; ++i) {
    const int at = (from + i) % count;
    const QStringView name = inPaths ? LastName(entries[at].name) : QStringView(entries[at].name);
    if (!BeginsBare(name, bare)) continue;
    if (name.startsWith(letters, Qt::CaseInsensitive)) return at;
    if (withOtherAccents < 0) withOtherAccents = at;
  }
  return withOtherAccents;
}

bool HoldsText(const QString& name, const QString& text) {
  return Bare(name).contains(Bare(text));
}

}  // namespace talnik
