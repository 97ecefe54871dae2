#include "calendar/MainMenu.h"
#include "calendar/MainWindow.h"
#include "calendar/Tray.h"

#include <QAction>
#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamReader>

namespace talnik::test {
namespace {

/// One chapter of the page: its list items and headings as they are heard, and the keys in it.
struct Chapter {
  QStringList lines;
  QStringList keys;
};

struct HelpPage {
  HelpPage();

  /// True when a line begins with the whole of `words`.
  bool Lists(const QString& chapter, const QString& words) const;
  bool NamesKey(const QString& chapter, const QString& key) const;

  QHash<QString, Chapter> chapters;
  QSet<QString> ids;
  QStringList links;
  QStringList problems;
  int titles = 0;
};

HelpPage::HelpPage() {
  QFile file(QStringLiteral(HELP_PAGE));
  if (!file.open(QIODevice::ReadOnly)) problems << u"the page is not where it is installed from"_qs;
  QXmlStreamReader xml(&file);
  QString chapter;
  QStringList open;  // texts of the elements that are being read
  const auto isHeard = [&xml] { return QStringList{u"li"_qs, u"h2"_qs, u"h3"_qs, u"kbd"_qs}.contains(xml.name()); };
  while (!xml.atEnd()) {
    xml.readNext();
    if (xml.isCharacters()) {
      for (QString& text : open) text += xml.text();
    } else if (xml.isStartElement()) {
      const QString id = xml.attributes().value(u"id"_qs).toString();
      if (!id.isEmpty() && ids.contains(id)) problems << u"twice: "_qs + id;
      if (!id.isEmpty()) ids << id;
      if (xml.name() == u"section") chapter = id;
      if (xml.name() == u"h1") ++titles;
      if (xml.name() == u"a") links << xml.attributes().value(u"href"_qs).toString();
      if (xml.name() == u"script" || xml.name() == u"table") problems << xml.name().toString();
      if (xml.name() == u"html" && xml.attributes().value(u"lang"_qs) != u"cs") problems << u"language"_qs;
      if (isHeard()) open << QString();
    } else if (xml.isEndElement() && isHeard()) {
      Chapter& at = chapters[chapter];
      (xml.name() == u"kbd" ? at.keys : at.lines) << open.takeLast().simplified();
    }
  }
  if (xml.hasError()) problems << xml.errorString() + u" in line "_qs + QString::number(xml.lineNumber());
}

bool HelpPage::Lists(const QString& chapter, const QString& words) const {
  const QStringList lines = chapters.value(chapter).lines;
  return std::any_of(lines.begin(), lines.end(), [&words](const QString& line) {
    if (!line.startsWith(words)) return false;
    return line.size() == words.size() || QStringView(u",.:").contains(line[words.size()]);
  });
}

bool HelpPage::NamesKey(const QString& chapter, const QString& key) const {
  const QRegularExpression whole(u"(^|[+ ])"_qs + QRegularExpression::escape(key) + u"($|[+ ])"_qs,
                                 QRegularExpression::CaseInsensitiveOption);
  return !chapters.value(chapter).keys.filter(whole).isEmpty();
}

/// What the page is to say of each item of a menu.
QStringList Expected(const QWidget& menu, bool isBar = true) {
  QStringList all;
  for (const QAction* action : menu.actions()) {
    if (action->isSeparator() || !action->isVisible()) continue;
    QString words = action->text().remove(u'&').section(u'\t', 0, 0).simplified();
    const QString key = action->text().section(u'\t', 1).trimmed();
    if (isBar) words.prepend(u"Nabídka "_qs);
    if (!key.isEmpty()) words += u", "_qs + key;
    all << words;
    if (action->menu()) all << Expected(*action->menu(), false);
  }
  return all;
}

/// The name of a key in the page; empty for those that only modify others.
QString CzechKey(const QString& name) {
  static const QHash<QString, QString> names = {{u"Return"_qs, u"Enter"_qs},
                                                {u"Space"_qs, u"mezerník"_qs},
                                                {u"Left"_qs, u"Šipka vlevo"_qs},
                                                {u"Right"_qs, u"Šipka vpravo"_qs},
                                                {u"Up"_qs, u"Šipka nahoru"_qs},
                                                {u"Down"_qs, u"Šipka dolů"_qs},
                                                {u"Control"_qs, u""_qs},
                                                {u"Shift"_qs, u""_qs},
                                                {u"NumericPlus"_qs, u"numerické plus"_qs},
                                                {u"NumericMinus"_qs, u"numerické minus"_qs}};
  return names.value(name, name);
}

/// The chapter of a source file that has none of its own name; empty where keys only pass through.
const QHash<QString, QString>& ChapterOfLogic() {
  static const QHash<QString, QString> chapters = {
      {u"MonthKeys"_qs, u"frmMain"_qs},
      {u"MainMenu"_qs, u"frmMain"_qs},
      {u"MonthList"_qs, u"frmMain"_qs},
      {u"TimeFieldPair"_qs, u"SpinTimeField"_qs},
      {u"EditorControls"_qs, u"frmSchedule"_qs},
      {u"ControlEvents"_qs, u""_qs},
      {u"FocusSpeech"_qs, u""_qs},
      {u"HotKeyText"_qs, u""_qs},
  };
  return chapters;
}

QString ChapterOf(const HelpPage& page, const QString& file) {
  if (ChapterOfLogic().contains(file)) return ChapterOfLogic().value(file);
  for (auto chapter = page.chapters.keyBegin(); chapter != page.chapters.keyEnd(); ++chapter) {
    if (!chapter->isEmpty() && file.startsWith(*chapter)) return *chapter;
  }
  return u"(none)"_qs;
}

QString ReadSource(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return QString::fromUtf8(file.readAll());
}

QSet<QString> FirstGroups(const QString& pattern, const QString& text) {
  QSet<QString> found;
  auto matches = QRegularExpression(pattern).globalMatch(text);
  while (matches.hasNext()) found << matches.next().captured(1);
  return found;
}

template <class Check>
void ForEachSource(const QString& mask, const Check& check) {
  QDirIterator files(QStringLiteral(SOURCE_FOLDER), {mask}, QDir::Files, QDirIterator::Subdirectories);
  int seen = 0;
  for (; files.hasNext(); ++seen) {
    const QString path = files.next();
    if (!path.contains(u"/platform/"_qs)) check(files.fileInfo().baseName(), ReadSource(path));
  }
  EXPECT_GT(seen, 50);
}

class Help : public MainWindow {
 protected:
  void ExpectListed(const QString& chapter, const QStringList& expected) {
    EXPECT_FALSE(expected.isEmpty());
    for (const QString& words : expected) {
      EXPECT_TRUE(page_.Lists(chapter, words)) << words.toStdString() << " in #" << chapter.toStdString();
    }
  }

  HelpPage page_;
};

TEST_F(Help, IsOnePageWhoseLinksLeadSomewhere) {
  EXPECT_EQ(page_.problems.join(u'\n').toStdString(), "");
  EXPECT_EQ(page_.titles, 1);
  for (const QString& link : std::as_const(page_.links)) {
    EXPECT_TRUE(link.startsWith(u'#') && page_.ids.contains(link.mid(1))) << link.toStdString();
  }
  for (auto chapter = page_.chapters.keyBegin(); chapter != page_.chapters.keyEnd(); ++chapter) {
    EXPECT_TRUE(chapter->isEmpty() || page_.links.contains(QString(u'#' + *chapter))) << chapter->toStdString();
  }
}

TEST_F(Help, NamesEveryMenuItemWithItsKey) {
  Add(u"úkol"_qs, u"15.1.2024 9:00"_qs);
  Start();
  ExpectListed(u"nabidky"_qs, Expected(*main_->menuBar()));
  QStringList tray;
  for (const TrayItem& item : TrayItems()) {
    const QString caption = *item.captionOf ? Menu(item.captionOf)->text() : QString::fromUtf8(item.caption);
    if (!caption.isEmpty()) tray << caption.simplified().remove(u'&');
  }
  ExpectListed(u"konec"_qs, tray);
  QStringList editor;
  user_.Expect([&editor](QWidget* window) {
    editor = Expected(*window->findChild<QMenuBar*>());
    window->close();
  });
  Choose("mnuTaskToday");
  ExpectListed(u"frmSchedule"_qs, editor);
}

TEST_F(Help, NamesEveryWindowAndEveryKeyThatAWindowActsOn) {
  ForEachSource(u"*.h"_qs, [this](const QString&, const QString& text) {
    for (const QString& window : FirstGroups(u"class (\\w+) : public (?:Form|fFileOpen)\\b"_qs, text)) {
      EXPECT_TRUE(page_.ids.contains(window)) << window.toStdString();
    }
  });
  ForEachSource(u"*.cpp"_qs, [this](const QString& file, const QString& text) {
    const QSet<QString> keys =
        FirstGroups(u"Qt::Key_(\\w+)"_qs, text) + FirstGroups(u"\\.(NumericPlus|NumericMinus)"_qs, text);
    const QString chapter = keys.isEmpty() ? QString() : ChapterOf(page_, file);
    for (const QString& key : keys) {
      const QString name = CzechKey(key);
      // A message swallows this one without doing anything.
      const bool isIdle = chapter.isEmpty() || name.isEmpty() || (file == u"frmMsg12" && key == u"Backspace");
      EXPECT_TRUE(isIdle || page_.NamesKey(chapter, name))
          << name.toStdString() << " of " << file.toStdString() << " in #" << chapter.toStdString();
    }
  });
}

TEST_F(Help, OpensInTheViewerOfTheFamilyElseInThatOfTheDesktop) {
  const QString page = world_.shell.Installed + u"help/lumora/talnik.htm"_qs;
  const QString viewer = world_.shell.Installed + u"pagetext/pagetext1.exe"_qs;
  const QString nothing =
      u"Nápovědu není čím otevřít. Nainstalujte prohlížeč webových stránek a otevřete v něm soubor "_qs;
  Start();
  ExpectMessage(u"Stránka nápovědy nebyla nalezena: "_qs + page, "cmdYES");
  Choose("mnuOpenHelp");
  WriteFile(page);
  FormDriver::Settle();
  world_.Heard();
  user_.Press(Qt::Key_F1);
  EXPECT_EQ(world_.shell.Opened, QStringList(page));
  EXPECT_EQ(Heard(), "say: Otevírám nápovědu.");
  ExpectMessage(nothing + page, "cmdYES");
  world_.shell.OpenFailed();
  ExpectMessage(nothing + page, "cmdYES");
  world_.shell.Opens = false;
  Choose("mnuOpenHelp");
  WriteFile(viewer);
  Choose("mnuOpenHelp");
  EXPECT_EQ(world_.shell.Started, QStringList(viewer + u' ' + page));
  EXPECT_EQ(world_.shell.Opened.size(), 2);
}

TEST_F(Help, UpdatesAreLookedForByTheProgramForThem) {
  const QString program = world_.shell.Installed + u"lm_download1.exe"_qs;
  QCoreApplication::setApplicationVersion(u"7.8"_qs);
  Start();
  ExpectMessage(u"Aktualizace tu nelze zkontrolovat, chybí program "_qs + program + u"\nNainstalovaná verze je 7.8."_qs,
                "cmdYES");
  Choose("mnuHelpCheckUpdate");
  WriteFile(program);
  Choose("mnuHelpCheckUpdate");
  EXPECT_EQ(world_.shell.Started, QStringList(program + u" /lmupdate1"_qs));
  world_.shell.Starts = false;
  ExpectMessage(u"Program pro aktualizace se nepodařilo spustit: "_qs + program, "cmdYES");
  Choose("mnuHelpCheckUpdate");
}

}  // namespace
}  // namespace talnik::test
