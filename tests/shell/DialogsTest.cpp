#include "shell/Form.h"
#include "shell/frmAction.h"
#include "shell/frmMsg12.h"
#include "support/FormWorld.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace talnik::test {
namespace {

TEST(VoiceDialog, FieldsAreCountedFromOneAndMissingOnesAreEmpty) {
  const char* const fields[] = {"", "a", "b", ""};
  for (int n = 0; n < 4; ++n) EXPECT_EQ(GetField(u"a|b"_qs, n).toStdString(), fields[n]) << n;
}

TEST(VoiceDialog, KindsWithoutADialogAnswerAtOnce) {
  FormWorld w;
  const auto ask = [&w](int low, int kind) { return w.dialogs.VoiceDialog(MakeCommand(low, kind), u"*.wav"_qs); };
  for (const int kind : {4, 5, 6, 7, 16, 40}) EXPECT_EQ(ask(7, kind), -1) << kind;
  EXPECT_EQ(ask(3, 0), -1);
  EXPECT_EQ(w.Heard(), "");
  EXPECT_EQ(ask(7, 8), 0);
  EXPECT_EQ(w.Heard(), "sound: refused.wav");
  w.dialogs.PickFile = [](int kind, const QString& text) { return kind == 14 && text == u"*.wav"_qs ? 1 : 0; };
  EXPECT_EQ(ask(7, 14), 1);
}

TEST(VoiceDialog, EachKindHasItsButtonsTagAndAnswers) {
  constexpr auto first = Dialogs::Default::First;
  const struct {
    int kind, tag;
    const char* yes;
    const char* play;
    int result;
    Dialogs::Default defaultButton = first;
  } cases[] = {{0, 806, "&OK", "Return > ", 1},
               {1, 806, "&OK", "Escape > ", 0},
               {2, 807, "&Ano", "Enter > ", 1},
               {2, 807, "&Ano", "Escape > ", 0},
               {2, 807, "&Ano", "Tab > say: Ano | Return > ", 1},
               {3, 807, "&Ano", "Tab > say: Ano | Tab > say: Ne | Return > ", 0},
               {3, 807, "&Ano", "Return > ", 0, Dialogs::Default::Second}};
  for (const auto& test : cases) {
    FormWorld w;
    w.driver.Expect([&](QWidget* dialog) {
      EXPECT_EQ(w.Heard(), "stop; say: Pozor Smazat záznam?");
      EXPECT_EQ(dialog->property("windowTag").toInt(), test.tag);
      EXPECT_EQ(FormDriver::Find<QPushButton>(dialog, "cmdYES")->text().toStdString(), test.yes);
      EXPECT_EQ(FormDriver::Find<QPushButton>(dialog, "cmdNO")->isVisible(), test.tag == 807);
      w.Play(test.play);
    });
    EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, test.kind), u"Smazat záznam?|Pozor"_qs, test.defaultButton),
              test.result)
        << test.kind << ' ' << test.play;
    EXPECT_TRUE(w.driver.AllCame());
  }
}

TEST(Message, KeysRereadEnlargeAndAreDropped) {
  FormWorld w;
  w.setting.InfoTextSize = 36;
  w.driver.Expect([&](QWidget* dialog) {
    const auto size = [text = FormDriver::Find<QPlainTextEdit>(dialog, "txtMessage")] {
      return text->font().pointSize();
    };
    EXPECT_EQ(size(), 36);
    w.Play("Space > say: Hotovo | Backspace >  | Num++ > say: Větší");
    EXPECT_EQ(size(), 46);
    w.Play("Num+- > say: menší | Num+- > say: menší | Num+- > say: menší | Num+- >  | Right > char: o");
    EXPECT_EQ(size(), 16);
    w.Play("Return > ");
  });
  w.dialogs.Tell(u"Hotovo"_qs);
}

TEST(Message, AWaitingOneClosesWhenItHasBeenReadUnlessTheUserReads) {
  for (const bool userReads : {false, true}) {
    FormWorld w;
    w.world.voice.Speaking = true;
    w.driver.Expect([&](QWidget* dialog) {
      auto& timer = static_cast<frmMsg12*>(dialog)->Timer1;
      EXPECT_TRUE(FormDriver::Until([&] { return timer.isActive(); }));
      w.Heard();
      w.world.voice.Speaking = userReads;
      if (!userReads) return;
      w.Press("Down");
      EXPECT_FALSE(timer.isActive());
      w.Press("Return");
    });
    EXPECT_EQ(w.dialogs.ShowMessage(1, u"Chvíli strpení"_qs, Dialogs::Default::First, true), userReads ? 1 : 0);
    EXPECT_EQ(w.Heard().ends_with("stop"), !userReads);
  }
}

TEST(Message, AHugeTextOpensAndStaysOnTheScreen) {
  FormWorld w;
  w.setting.InfoTextSize = 2'000'000'000;
  w.driver.Expect([&](QWidget* dialog) {
    EXPECT_TRUE(dialog->screen()->availableGeometry().contains(dialog->geometry()));
    dialog->close();
  });
  EXPECT_EQ(w.dialogs.VoiceDialog(MakeCommand(7, 0), u"dlouhá zpráva "_qs.repeated(50000)), 0);
}

const QString Question = u"Co dělat?;Ukončit Talník;Skrýt Talník;Vždy ukončit;Vždy skrýt;Zpět"_qs;

/// Shows the list and plays the keys in it; returns the choice that was taken.
int Choose(FormWorld& w, frmAction& form, const QString& text, const char* play) {
  w.driver.Expect([&](QWidget* dialog) {
    FormDriver::Until([&] { return !w.world.transcript.isEmpty(); });
    EXPECT_EQ(w.Heard(), "say: " + text.section(u';', 0, 1).replace(u';', u' ').toStdString());
    EXPECT_TRUE(form.FocusTimer.isActive());
    w.Play(play);
    if (dialog->isVisible()) dialog->close();
  });
  form.InitActions(text);
  EXPECT_TRUE(w.driver.AllCame());
  EXPECT_FALSE(form.FocusTimer.isActive());
  return form.ChosenAction;
}

TEST(Action, KeysMoveTakeAndLeave) {
  const std::pair<const char*, int> cases[] = {
      {"Return > ", 1},
      {"Down > say: Skrýt Talník | Enter > ", 2},
      {"Up > sound: end.wav | Return > ", 1},
      {"End > say: Zpět | Up > say: Vždy skrýt | Down > say: Zpět | Down > sound: end.wav | Return > ", 5},
      {"End > say: Zpět | Home > say: Ukončit Talník | Return > ", 1},
      {"V > say: Vždy ukončit | V > say: Vždy ukončit | Return > ", 3},
      {"X >  | Return > ", 1},
      {"Down > say: Skrýt Talník | Escape > ", -1},
      {"Tab > say: Skrýt Talník | Backspace > ", -1},
  };
  for (const auto& [play, chosen] : cases) {
    FormWorld w;
    frmAction form(w.services);
    EXPECT_EQ(Choose(w, form, Question, play), chosen) << play;
    EXPECT_EQ(form.ChosenActionText, chosen < 0 ? QString() : Question.section(u';', chosen, chosen));
  }
}

TEST(Action, TheWindowTellsWhatIsMarked) {
  FormWorld w;
  frmAction form(w.services);
  w.driver.Expect([&](QWidget* dialog) {
    w.Press("Down");
    EXPECT_EQ(dialog->property("windowTag").toInt(), 809);
    EXPECT_EQ(dialog->windowTitle().toStdString(), "Co dělat? Skrýt Talník");
    EXPECT_EQ(dialog->focusWidget(), FormDriver::Find<QLabel>(dialog, "lblAction_2"));
    EXPECT_FALSE(FormDriver::Find<QLabel>(dialog, "lblAction_6")->isVisible());
    dialog->close();
  });
  form.InitActions(Question);
}

TEST(Action, InBlockModeALetterTakesItsChoiceAtTheReleaseWithoutAWord) {
  FormWorld w;
  frmAction form(w.services);
  form.BlockOnAction();
  EXPECT_EQ(Choose(w, form, Question, "S > "), 2);
}

TEST(Action, MoreThanThirteenChoicesAreCutAndNoneIsNothing) {
  FormWorld w;
  frmAction form(w.services);
  QString text = u"Titul"_qs;
  for (int i = 1; i <= 20; ++i) text += u";volba %1"_qs.arg(i);
  EXPECT_EQ(Choose(w, form, text, "End > say: volba 13 | Down > sound: end.wav | Return > "), 13);
  form.InitActions(u"Titul"_qs);
  EXPECT_EQ(form.ChosenAction, -1);
}

struct TallForm : Form {
  explicit TallForm(FormServices& services) : Form(services, u"frmTall"_qs, 1799) {
    auto* all = new QVBoxLayout(this);
    for (int i = 0; i < 60; ++i) all->addWidget(last = new QPushButton(QString::number(i), this));
  }
  int Open() { return ShowModal(); }
  QPushButton* last = nullptr;
};

TEST(Form, AWindowTallerThanTheScreenIsScrolledToTheFocus) {
  FormWorld w;
  TallForm form(w.services);
  w.driver.Expect([&](QWidget* dialog) {
    EXPECT_TRUE(dialog->screen()->availableGeometry().contains(dialog->geometry()));
    const auto* area = dialog->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    const auto inSight = [&] {
      return area->viewport()->rect().contains(form.last->mapTo(area->viewport(), form.last->rect().center()));
    };
    EXPECT_FALSE(inSight());
    form.last->setFocus();
    EXPECT_TRUE(inSight());
    dialog->close();
  });
  form.Open();
  EXPECT_TRUE(w.driver.AllCame());
}

}  // namespace
}  // namespace talnik::test
