#include "shell/Speech.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/frmProgress.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

class Progress : public testing::Test {
 protected:
  void Open() {
    form.Label1->setText(u"Fáze"_qs);
    form.SayPercent = true;
    user.Expect([](QWidget*) {});
    form.Open(Qt::ApplicationModal);
    ASSERT_TRUE(FormDriver::Until([this] { return user.AllCame() && form.isActiveWindow(); }));
    FormDriver::Settle();
  }
  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }

  FakeWorld world;
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  Speech speech{&world.voice, world.braille, world.sound, u"/sound/"_qs};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver user;
  frmProgress form{services, u"Dlouhá práce"_qs};
};

TEST_F(Progress, TellsWhatItIsAndEachTenPercentOnce) {
  Open();
  EXPECT_EQ(Heard(), "say: Dlouhá práce; and: Fáze");
  for (int step = 0; step <= 25; ++step) form.SetShape(step, 100);
  EXPECT_EQ(Heard(), "sound: tick.wav; sound: tick.wav; say: 10 procent; sound: tick.wav; say: 20 procent");
  EXPECT_EQ(form.Text1->text(), u"20 procent"_qs);
  EXPECT_EQ(form.Shape1->width(), form.Shape1->parentWidget()->contentsRect().width() / 4);

  world.voice.Speaking = true;
  form.SetShape(30, 100);
  EXPECT_EQ(Heard(), "sound: tick.wav") << "what is being said is not cut";
  EXPECT_EQ(form.Text1->text(), u"30 procent"_qs);
  form.Unload();
  EXPECT_FALSE(form.Cancelled());
  Heard();
  form.SetShape(50, 100);
  EXPECT_EQ(Heard(), "") << "a window that is not there makes no sound";
}

TEST_F(Progress, EveryWayOfClosingGivesUp) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape", [this] { user.Press(Qt::Key_Escape); }},
      {"Enter on the button",
       [this] {
         form.cmdCancel->setFocus();
         user.Press(Qt::Key_Return);
       }},
      {"the frame", [this] { form.close(); }},
  };
  for (const auto& [name, close] : ways) {
    Open();
    user.Press(Qt::Key_Return);
    EXPECT_FALSE(form.Cancelled()) << "Enter in the status";
    close();
    form.SetShape(1, 2);
    EXPECT_TRUE(form.Cancelled()) << name;
    EXPECT_FALSE(form.isVisible()) << name;
    FormDriver::Settle();
  }
}

}  // namespace
}  // namespace talnik::test
