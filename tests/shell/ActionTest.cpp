#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/frmAction.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

struct ActionWorld {
  FakeWorld world;
  Speech speech{&world.voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver driver;
  frmAction form{services};

  /// Shows the list and presses the keys; returns the choice that was taken.
  int Choose(const QString& text, const QList<int>& keys) {
    driver.Expect([this, keys](QWidget* dialog) {
      FormDriver::Until([this] { return !world.transcript.isEmpty(); });
      opening = world.Heard().join(u"; "_qs).toStdString();
      for (const int key : keys) driver.Press(key, Qt::NoModifier, dialog);
      if (dialog->isVisible()) dialog->close();
    });
    form.InitActions(text);
    EXPECT_TRUE(driver.AllCame());
    return form.ChosenAction;
  }

  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }

  std::string opening;
};

const QString Question = u"Co dělat?;Ukončit Talník;Skrýt Talník;Vždy ukončit;Vždy skrýt;Zpět"_qs;

TEST(Action, KeysMoveTakeAndLeave) {
  struct Case {
    QList<int> keys;
    int chosen;
    const char* heard;
  };
  for (const Case& test :
       std::vector<Case>{{{Qt::Key_Return}, 1, ""},
                         {{Qt::Key_Down, Qt::Key_Enter}, 2, "say: Skrýt Talník"},
                         {{Qt::Key_Up, Qt::Key_Return}, 1, "sound: end.wav"},
                         {{Qt::Key_End, Qt::Key_Down, Qt::Key_Return}, 5, "say: Zpět; sound: end.wav"},
                         {{Qt::Key_End, Qt::Key_Home, Qt::Key_Return}, 1, "say: Zpět; say: Ukončit Talník"},
                         {{Qt::Key_V, Qt::Key_V, Qt::Key_Return}, 3, "say: Vždy ukončit; say: Vždy ukončit"},
                         {{Qt::Key_X, Qt::Key_Return}, 1, ""},
                         {{Qt::Key_Down, Qt::Key_Escape}, -1, "say: Skrýt Talník"},
                         {{Qt::Key_Down, Qt::Key_Backspace}, -1, "say: Skrýt Talník"}}) {
    ActionWorld w;
    EXPECT_EQ(w.Choose(Question, test.keys), test.chosen);
    EXPECT_EQ(w.opening, "say: Co dělat? Ukončit Talník");
    EXPECT_EQ(w.Heard(), test.heard);
    const QStringList choices = Question.split(u';');
    EXPECT_EQ(w.form.ChosenActionText, test.chosen < 0 ? QString() : choices[test.chosen]);
    EXPECT_FALSE(w.form.FocusTimer.isActive());
  }
}

TEST(Action, TheWindowTellsWhatIsMarked) {
  ActionWorld w;
  w.driver.Expect([&](QWidget* dialog) {
    EXPECT_EQ(dialog->property("windowTag").toInt(), 809);
    EXPECT_TRUE(w.form.FocusTimer.isActive());
    w.driver.Press(Qt::Key_Down, Qt::NoModifier, dialog);
    EXPECT_EQ(dialog->windowTitle().toStdString(), "Co dělat? Skrýt Talník");
    EXPECT_EQ(dialog->focusWidget(), FormDriver::Find<QLabel>(dialog, "lblAction_2"));
    EXPECT_FALSE(FormDriver::Find<QLabel>(dialog, "lblAction_6")->isVisible());
    dialog->close();
  });
  w.form.InitActions(Question);
}

TEST(Action, InBlockModeALetterTakesItsChoiceAtTheReleaseWithoutAWord) {
  ActionWorld w;
  w.form.BlockOnAction();
  w.driver.Expect([&](QWidget*) {
    w.world.Heard();
    w.driver.PressOnly(Qt::Key_S);
    w.driver.Type(u"s"_qs);
  });
  w.form.InitActions(Question);
  EXPECT_EQ(w.form.ChosenAction, 2);
  EXPECT_EQ(w.Heard(), "");
}

TEST(Action, MoreThanThirteenChoicesAreCutAndNoneIsNothing) {
  ActionWorld w;
  QString text = u"Titul"_qs;
  for (int i = 1; i <= 20; ++i) text += u";volba %1"_qs.arg(i);
  EXPECT_EQ(w.Choose(text, {Qt::Key_End, Qt::Key_Down, Qt::Key_Return}), 13);
  EXPECT_EQ(w.Heard(), "say: volba 13; sound: end.wav");
  w.form.InitActions(u"Titul"_qs);
  EXPECT_EQ(w.form.ChosenAction, -1);
}

}  // namespace
}  // namespace talnik::test
