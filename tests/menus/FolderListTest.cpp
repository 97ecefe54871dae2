#include "menus/FolderList.h"
#include "menus/PickerRequest.h"

#include <QCollator>
#include <QLocale>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>

namespace talnik::test {
namespace {

QList<Folders::Entry> Entries(const char* text) {
  QList<Folders::Entry> entries;
  for (const QString& name : QString::fromUtf8(text).split(u',')) {
    const bool isFolder = name.endsWith(u'/');
    entries << Folders::Entry{isFolder ? name.chopped(1) : name, isFolder, false};
  }
  return entries;
}

std::string Names(const QList<Folders::Entry>& entries) {
  QStringList names;
  for (const Folders::Entry& entry : entries) names << entry.name + (entry.isFolder ? u"/"_qs : u""_qs);
  return names.join(u',').toStdString();
}

TEST(FolderList, FoldersComeFirstAndAllIsInCzechOrder) {
  const std::pair<const char*, const char*> lists[] = {
      {"b,Z/,a,č,c,h/,ch/,i/,d", "h/,ch/,i/,Z/,a,b,c,č,d"},
      {"chata,cizí,hrad,Čáp,čas,cukr", "cizí,cukr,Čáp,čas,hrad,chata"},
      {"kára,kara,Kara,kar,karb", "kar,kara,Kara,kára,karb"},
      {"b10,b 2,b_2,b-2,B2,b2", "b 2,b_2,b-2,b10,b2,B2"},
      {"žába,zebra,zá,za,ža", "za,zá,zebra,ža,žába"},
  };
  for (const auto& [given, sorted] : lists) EXPECT_EQ(Names(FolderList(Entries(given), NameFilter())), sorted) << given;
}

TEST(FolderList, TheQuickOrderIsThatOfTheCollator) {
  const QStringList syllables{u"c"_qs, u"h"_qs, u"Ch"_qs, u"á"_qs, u"a"_qs, u"ř"_qs, u"R"_qs, u" "_qs, u"-"_qs,
                              u"7"_qs, u"."_qs, u"ö"_qs,  u"ž"_qs, u"č"_qs, u"Ť"_qs, u"я"_qs, u"_"_qs};
  QList<Folders::Entry> entries;
  QStringList sorted;
  for (int i = 0; i < 4000; ++i) {
    QString name;
    for (int rest = i * 7919 % 83521; rest > 0; rest /= 17) name += syllables[rest % 17];
    entries << Folders::Entry{name, false, false};
    sorted << name;
  }
  const QCollator collator(QLocale(u"cs_CZ"_qs));
  std::stable_sort(sorted.begin(), sorted.end(),
                   [&](const QString& a, const QString& b) { return collator.compare(a, b) < 0; });
  const QList<Folders::Entry> lines = FolderList(entries, NameFilter());
  for (qsizetype i = 0; i < lines.size(); ++i) {
    ASSERT_EQ(collator.compare(lines[i].name, sorted[i]), 0)
        << i << ' ' << qPrintable(lines[i].name + u'|' + sorted[i]);
  }
}

TEST(FolderList, AFilterShowsFilesByTheirMasks) {
  const std::pair<const char*, const char*> filters[] = {{"*.wav", "x/,a.wav,B.WAV"},
                                                         {"*.wav; *.mp3", "x/,a.wav,B.WAV,c.mp3"},
                                                         {"*.*", "x/,a.wav,B.WAV,c.mp3,README,w.wave"},
                                                         {"", "x/,a.wav,B.WAV,c.mp3,README,w.wave"},
                                                         {"?.wav*", "x/,a.wav,B.WAV,w.wave"},
                                                         {"*.ogg", "x/"},
                                                         {"[", "x/"}};
  for (const auto& [masks, shown] : filters) {
    const NameFilter filter(QString::fromUtf8(masks));
    EXPECT_EQ(Names(FolderList(Entries("a.wav,c.mp3,README,x/,B.WAV,w.wave"), filter)), shown) << masks;
  }
}

TEST(FolderList, LettersFindTheNextName) {
  const QList<Folders::Entry> entries = Entries("čaj,cesta,Dům,dort,ďas,sub/éter,škola");
  struct {
    const char* letters;
    int from;
    int found;
  } const cases[] = {{"d", 0, 2}, {"d", 3, 3}, {"d", 4, 2},  {"ď", 0, 4},  {"do", 2, 3}, {"č", 1, 0},      {"c", 0, 1},
                     {"é", 0, 5}, {"e", 0, 5}, {"sk", 0, 6}, {"DŮ", 0, 2}, {"x", 0, -1}, {"cestau", 0, -1}};
  for (const auto& [letters, from, found] : cases)
    EXPECT_EQ(FindByLetters(entries, QString::fromUtf8(letters), from, true), found) << letters << ' ' << from;
  EXPECT_EQ(FindByLetters({}, u"a"_qs, 0), -1);
  EXPECT_EQ(FindByLetters(Entries("e\u0301ter"), u"éter"_qs, 0), 0) << "the accent as a character of its own";
}

TEST(FolderList, IsSpokenWithItsCount) {
  const std::pair<const char*, const char*> counts[] = {{"a/", "1 složka"},
                                                        {"a/,b/,c", "2 složky, 1 soubor"},
                                                        {"a,b,c,d", "4 soubory"},
                                                        {"a/,b/,c/,d/,e/,f,g,h,i,j", "5 složek, 5 souborů"}};
  for (const auto& [entries, spoken] : counts)
    EXPECT_EQ(SpokenCount(Entries(entries)).toStdString(), spoken) << entries;
}

TEST(FolderList, PathsAreTakenApartAndPutTogether) {
  const std::pair<QString, const char*> texts[] = {
      {PathIn(u"/"_qs, u"a"_qs), "/a"},
      {TypedPath(u"a.txt"_qs, u"/home/eva"_qs, u"/home/eva"_qs), "/home/eva/a.txt"},
      {TypedPath(u"../jan/./b"_qs, u"/home/eva"_qs, u""_qs), "/home/jan/b"},
      {TypedPath(u"~/x"_qs, u"/tmp"_qs, u"/home/eva"_qs), "/home/eva/x"},
      {TypedPath(u"~"_qs, u"/tmp"_qs, u"/home/eva"_qs), "/home/eva"},
      {TypedPath(u"~x"_qs, u"/tmp"_qs, u"/home/eva"_qs), "/tmp/~x"},
      {TypedPath(u"//a//b/"_qs, u"/tmp"_qs, u""_qs), "/a/b"},
      {TypedPath(u"../../../.."_qs, u"/tmp"_qs, u""_qs), "/"},
      {WithExtension(u"/a"_qs, u"*.csv"_qs), "/a.csv"},
      {WithExtension(u"/a.CSV"_qs, u"*.csv"_qs), "/a.CSV"},
      {WithExtension(u"/a.txt"_qs, u"*.csv"_qs), "/a.txt.csv"},
      {WithExtension(u"/a"_qs, u"*.*"_qs), "/a"},
      {WithExtension(u"/a"_qs, u"*.wav;*.mp3"_qs), "/a"},
      {WithExtension(u"/a"_qs, u""_qs), "/a"},
  };
  for (const auto& [text, expected] : texts) EXPECT_EQ(text.toStdString(), expected);
}

TEST(PickerRequest, EachPairOfKindsHasItsFields) {
  struct {
    int kind;
    const char* text;
    const char* fields;
    int tag;
  } const cases[] = {{8, "*.csv|/data|Import", "*.csv//data/Import", 1701},
                     {9, "*.csv", "*.csv//", 1701},
                     {10, "*.csv||/data|Export", "*.csv//data/Export", 1704},
                     {11, "*.*|||Uložit", "*.*//Uložit", 1704},
                     {13, "|/data|Složka", "//data/Složka", 1705},
                     {14, "*.wav|zvon.wav|/s|Otevřít", "*.wav/zvon.wav//s/Otevřít", 1702}};
  for (const auto& [kind, text, fields, tag] : cases) {
    const auto request = ReadPickerRequest(kind, QString::fromUtf8(text));
    ASSERT_TRUE(request);
    QStringList parts{request->filter};
    if (!request->fileName.isEmpty()) parts << request->fileName;
    parts << request->startFolder << request->caption;
    EXPECT_EQ(parts.join(u'/').toStdString(), fields) << kind;
    EXPECT_EQ(request->tag, tag);
    EXPECT_EQ(request->choosesFilter, kind != 13);
    EXPECT_EQ(request->saves, kind == 10 || kind == 11);
  }
  EXPECT_FALSE(ReadPickerRequest(7, QString()) || ReadPickerRequest(16, QString()));
}

}  // namespace
}  // namespace talnik::test
