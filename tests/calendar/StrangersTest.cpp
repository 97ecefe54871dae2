#include "calendar/MainWindow.h"
#include "shell/CommonSettings.h"

#include <QDir>
#include <QDirIterator>
#include <QPlainTextEdit>

#include <sys/stat.h>

namespace talnik::test {
namespace {

/// Texts that look like something else.
const char* const kOdd[] = {"'); DROP TABLE schedule; --", "%1 %2 %s %n %L1 %%",          "../../etc/passwd",
                            "<b>tučně</b><img src='x'>",   "Jez &pij && spi &amp; &#38;", "*?[a-z]_%'\"",
                            "$(touch x) `touch x` | x"};

class StrangersTexts : public MainWindow {
 protected:
  /// Every file below the folder that is not the program's own.
  QStringList Outside() const {
    QStringList found;
    QDirIterator below(folder_.path(), QDir::Files | QDir::System | QDir::Hidden, QDirIterator::Subdirectories);
    while (below.hasNext()) {
      const QString path = below.next();
      if (!path.startsWith(InData(""))) found << path;
    }
    found.sort();
    return found;
  }
  static std::string Text(QWidget* window) {
    return FormDriver::Find<QPlainTextEdit>(window, "Text1")->toPlainText().toStdString();
  }
};

TEST_F(StrangersTexts, AreShownAsTheyStandAndDoNothing) {
  constexpr auto count = static_cast<int>(std::size(kOdd));
  for (int i = 0; i < count; ++i) {
    Add(QString::fromUtf8(kOdd[i]), u"15.1.2024 9:0%1"_qs.arg(i), {}, u"15.1.2024 8:0%1"_qs.arg(i));
  }
  const QStringList before = Outside();
  Start();
  user_.Expect([this](QWidget* editor) {
    for (const char* odd : kOdd) {
      EXPECT_EQ(Text(editor), odd);
      user_.Press(Qt::Key_PageDown, Qt::NoModifier, editor);
    }
    user_.Press(Qt::Key_Escape, Qt::NoModifier, editor);
  });
  Choose("mnuTaskToday");
  for (const char* odd : kOdd) {
    user_.Expect([this, odd](QWidget* box) {
      user_.Press(Qt::Key_Return, Qt::NoModifier, box);
      EXPECT_EQ(Text(box).substr(Text(box).find('\n') + 1), odd);
      user_.Press(Qt::Key_Escape, Qt::NoModifier, box);
    });
    world_.clock.Moment = world_.clock.Moment.addSecs(1);
    QMetaObject::invokeMethod(&main_->Timer1, "timeout");
  }
  EXPECT_TRUE(user_.AllCame());
  EXPECT_EQ(RowCount(), count);
  EXPECT_EQ(Outside(), before);
}

TEST_F(StrangersTexts, AnyFamilyFolderLeavesTheProgramWhole) {
  Add(u"úkol"_qs, u"15.1.2024 9:00"_qs);
  const QString pipes = folder_.path() + u"/pipes/talnik"_qs;
  ASSERT_TRUE(QDir().mkpath(pipes));
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipes + u"/src_Names.dat"_qs), 0600), 0);
  const QStringList before = Outside();
  const QString hostile[] = {u"relative"_qs,
                             u".."_qs,
                             u"/etc"_qs,
                             u"/dev/null"_qs,
                             u"/proc/self/mem"_qs,
                             u"\\"_qs,
                             u"a'b\"c%s%n%1"_qs,
                             QString(5000, u'x'),
                             folder_.path() + u"/pipes"_qs};
  for (const QString& path : hostile) {
    FakeWorld world;
    world.shell.LocalData = folder_.path();
    world.registry.Values[CommonKey() + u"|Path"_qs] = path;
    QFile::remove(InData("Names.dat"));
    frmMain program(std::move(world.platform), {});
    ASSERT_TRUE(program.Load()) << path.toStdString();
    FormDriver::Settle();
    program.EndSession();
    EXPECT_EQ(RowCount(), 1) << path.toStdString();
    EXPECT_EQ(Outside(), before) << path.toStdString();
  }
}

}  // namespace
}  // namespace talnik::test
