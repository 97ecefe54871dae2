#include "shell/Form.h"
#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "shell/frmMsg12.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace talnik::test {
namespace {

struct DialogWorld {
  FakeWorld world;
  Speech speech{&world.voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver driver;

  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }
};

int PropertyOf(QWidget* window, const char* name) {
  return window->property(name).toInt();
}

TEST(VoiceDialog, FieldsAreCountedFromOneAndMissingOnesAreEmpty) {
  EXPECT_EQ(GetField(u"a|b"_qs, 1).toStdString(), "a");
  EXPECT_EQ(GetField(u"a|b"_qs, 2).toStdString(), "b");
  EXPECT_EQ(GetField(u"a|b"_qs, 3).toStdString(), "");
  EXPECT_EQ(GetField(u"a"_qs, 0).toStdString(), "");
}

TEST(VoiceDialog, KindsWithoutADialogAnswerAtOnce) {
  DialogWorld w;
  for (const int kind : {4, 5, 6, 7, 16, 40})
    EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, kind), u"x"_qs), -1) << kind;
  EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(3, 0), u"x"_qs), -1);
  EXPECT_EQ(w.Heard(), "");
  EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, 8), u"*.csv"_qs), 0);
  EXPECT_EQ(w.Heard(), "sound: refused.wav");
  w.dialogs.PickFile = [](int kind, const QString& text) { return kind == 14 && text == u"*.wav"_qs ? 1 : 0; };
  EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, 14), u"*.wav"_qs), 1);
}

TEST(VoiceDialog, EachKindHasItsButtonsTagAndAnswers) {
  struct Case {
    int kind, key, tag;
    bool no;
    Dialogs::Default defaultButton;
    int expected;
  };
  constexpr auto first = Dialogs::Default::First;
  constexpr auto second = Dialogs::Default::Second;
  for (const Case& test : {Case{0, Qt::Key_Return, 806, false, first, 1}, Case{1, Qt::Key_Escape, 806, false, first, 0},
                           Case{2, Qt::Key_Return, 807, true, first, 1}, Case{2, Qt::Key_Escape, 807, true, first, 0},
                           Case{3, Qt::Key_Enter, 807, true, second, 0}}) {
    DialogWorld w;
    w.driver.Expect([&](QWidget* dialog) {
      EXPECT_EQ(PropertyOf(dialog, "windowTag"), test.tag);
      EXPECT_EQ(dialog->windowTitle().toStdString(), "Pozor");
      auto* yes = FormDriver::Find<QPushButton>(dialog, "cmdYES");
      auto* no = FormDriver::Find<QPushButton>(dialog, "cmdNO");
      EXPECT_EQ(yes->text().toStdString(), test.no ? "&Ano" : "&OK");
      EXPECT_EQ(no->isVisible(), test.no);
      EXPECT_EQ(w.Heard(), "stop; say: Pozor Smazat záznam?");
      w.driver.Press(test.key, Qt::NoModifier, dialog);
    });
    EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, test.kind), u"Smazat záznam?|Pozor"_qs, test.defaultButton),
              test.expected);
    EXPECT_TRUE(w.driver.AllCame());
  }
}

TEST(VoiceDialog, ButtonsAreReachedByTabAndPressed) {
  DialogWorld w;
  w.driver.Expect([&](QWidget* dialog) {
    w.driver.Press(Qt::Key_Tab, Qt::NoModifier, dialog);
    w.driver.Press(Qt::Key_Tab, Qt::NoModifier, dialog);
    EXPECT_EQ(dialog->focusWidget()->objectName().toStdString(), "cmdNO");
    EXPECT_TRUE(w.Heard().ends_with("say: Ano; say: Ne"));
    w.driver.Press(Qt::Key_Return, Qt::NoModifier, dialog);
  });
  EXPECT_FALSE(w.dialogs.Ask(u"Smazat?"_qs));
}

TEST(Message, KeysRereadEnlargeAndAreDropped) {
  DialogWorld w;
  w.setting.InfoTextSize = 36;
  w.driver.Expect([&](QWidget* dialog) {
    auto* text = FormDriver::Find<QPlainTextEdit>(dialog, "txtMessage");
    w.Heard();
    w.driver.Press(Qt::Key_Space, Qt::NoModifier, dialog);
    EXPECT_EQ(w.Heard(), "say: Hotovo");
    w.driver.Press(Qt::Key_Backspace, Qt::NoModifier, dialog);
    EXPECT_EQ(w.Heard(), "");
    const int size = text->font().pointSize();
    EXPECT_EQ(size, 36);
    w.driver.Press(Qt::Key_Plus, Qt::KeypadModifier, dialog);
    EXPECT_EQ(text->font().pointSize(), size + 10);
    for (int i = 0; i < 10; ++i) w.driver.Press(Qt::Key_Minus, Qt::KeypadModifier, dialog);
    EXPECT_EQ(text->font().pointSize(), 16);
    w.Heard();
    w.driver.Press(Qt::Key_Right, Qt::NoModifier, dialog);
    EXPECT_EQ(w.Heard(), "char: o");
    w.driver.Press(Qt::Key_Return, Qt::NoModifier, dialog);
  });
  w.dialogs.Tell(u"Hotovo"_qs);
}

TEST(Message, AWaitingOneClosesWhenItHasBeenReadUnlessTheUserReads) {
  for (const bool userReads : {false, true}) {
    DialogWorld w;
    w.world.voice.Speaking = true;
    w.driver.Expect([&](QWidget* dialog) {
      auto& timer = static_cast<frmMsg12*>(dialog)->Timer1;
      EXPECT_TRUE(FormDriver::Until([&] { return timer.isActive(); }));
      if (userReads) {
        w.driver.Press(Qt::Key_Down, Qt::NoModifier, dialog);
        EXPECT_FALSE(timer.isActive());
        w.driver.Press(Qt::Key_Return, Qt::NoModifier, dialog);
      } else {
        w.Heard();
        w.world.voice.Speaking = false;
      }
    });
    EXPECT_EQ(w.dialogs.ShowMessage(1, u"Chvíli strpení"_qs, Dialogs::Default::First, true), userReads ? 1 : 0);
    EXPECT_EQ(w.Heard().ends_with("stop"), !userReads);
  }
}

TEST(Message, AHugeTextOpensAndStaysOnTheScreen) {
  DialogWorld w;
  w.driver.Expect([&](QWidget* dialog) {
    EXPECT_TRUE(dialog->screen()->availableGeometry().contains(dialog->geometry()));
    dialog->close();
  });
  EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, 0), u"dlouhá zpráva "_qs.repeated(50000)), 0);
}

struct TallForm : Form {
  explicit TallForm(FormServices& services) : Form(services, u"frmTall"_qs, 1799) {
    auto* all = new QVBoxLayout(this);
    for (int i = 0; i < 60; ++i) {
      auto* button = new QPushButton(QString::number(i), this);
      NameControl(button, u"cmd%1"_qs.arg(i), u"Tlačítko %1"_qs.arg(i));
      SetControlId(button, i);
      all->addWidget(button);
    }
  }
  int Open() { return ShowModal(); }
};

TEST(Form, AWindowTallerThanTheScreenIsScrolledToTheFocus) {
  DialogWorld w;
  TallForm form(w.services);
  w.driver.Expect([&](QWidget* dialog) {
    EXPECT_TRUE(dialog->screen()->availableGeometry().contains(dialog->geometry()));
    auto* last = FormDriver::Find<QPushButton>(dialog, "cmd59");
    EXPECT_EQ(PropertyOf(last, "controlId"), 59);
    auto* area = dialog->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_FALSE(area->viewport()->rect().contains(last->mapTo(area->viewport(), last->rect().center())));
    w.driver.Press(Qt::Key_Backtab, Qt::ShiftModifier, dialog);
    EXPECT_EQ(dialog->focusWidget(), last);
    EXPECT_TRUE(area->viewport()->rect().contains(last->mapTo(area->viewport(), last->rect().center())));
    dialog->close();
  });
  form.Open();
  EXPECT_TRUE(w.driver.AllCame());
}

TEST(Form, UnavailableControlsStayReadable) {
  const auto luminance = [](const QColor& color) {
    const auto part = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
  };
  for (const auto& [fore, back] : {std::pair(QColor(255, 255, 0), QColor(0, 0, 0)),
                                   {Qt::black, Qt::yellow},
                                   {Qt::white, Qt::blue},
                                   {Qt::darkBlue, Qt::white}}) {
    const double one = luminance(SubduedColor(fore, back));
    const double other = luminance(back);
    EXPECT_GE((std::max(one, other) + 0.05) / (std::min(one, other) + 0.05), 7.0) << fore.name().toStdString();
  }
  EXPECT_EQ(SubduedColor(Qt::gray, Qt::white), QColor(Qt::gray));
}

}  // namespace
}  // namespace talnik::test
