#include "platform/HotKey.h"
#include "shell/HotKeyText.h"
#include "shell/SettingsValues.h"
#include "shell/frmSettings.h"
#include "support/FormWorld.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTemporaryDir>

#include <functional>

namespace talnik::test {

namespace {

constexpr int kCtrlAltT = 6 << 16 | 'T';
const QString kIni = u"/d/talnik.ini"_qs;

struct SettingsWorld : FormWorld {
  SettingsWorld() {
    setting.Init(kIni, QString(), u"/f/"_qs);
    setting.HotKeyCall = kCtrlAltT;
    setting.User = u"jana"_qs;
  }

  /// Opens the dialog, lets the user do `what`, and ends it unless that did.
  void Open(const std::function<void(frmSettings&)>& what) {
    frmSettings form(services,
                     {.state = state,
                      .shell = world.shell,
                      .keyboardHook = world.keyboardHook,
                      .registry = world.registry,
                      .SyncTimerSetting = [this] { order << u"timer %1"_qs.arg(setting.AutSync); },
                      .handOver =
                          [this](const QString& password, QString& reason) {
                            order << u"password"_qs;
                            given = password;
                            reason = u"box"_qs;
                            return handsOver;
                          }},
                     nullptr);
    driver.Expect([&](QWidget*) {
      FormDriver::Settle();
      what(form);
      if (form.isVisible()) form.reject();
    });
    form.Open();
    EXPECT_TRUE(driver.AllCame());
  }

  void ExpectWarning(const QString& text) {
    driver.Expect([this, text](QWidget* dialog) {
      EXPECT_EQ(FormDriver::Find<QPlainTextEdit>(dialog, "txtMessage")->toPlainText().toStdString(),
                text.toStdString());
      Press("Return");
    });
  }

  std::string Stored(const char* key) {
    return world.profile.Text(kIni, u"Application"_qs, QString::fromLatin1(key)).value_or(u"-"_qs).toStdString();
  }

  SettingsState state;
  QStringList order;
  QString given;
  bool handsOver = true;
};

}  // namespace

TEST(HotKeyText, NamesTheKeysThatAreHeldAndTheKey) {
  const std::pair<int, const char*> texts[] = {{0, ""},
                                               {'T', "T"},
                                               {6 << 16 | 'T', "CTRL + ALT + T"},
                                               {7 << 16 | '1', "CTRL + ALT + SHIFT + 1"},
                                               {1 << 16 | 0x7b, "SHIFT + F12"},
                                               {0x24, "HOME"},
                                               {2 << 16 | 0x60, "CTRL + NUM 0"},
                                               {0xbc, ","},
                                               {6 << 16, ""}};
  for (const auto& [hotKey, text] : texts) EXPECT_EQ(HotKeyText(LowWord(hotKey), HighWord(hotKey)).toStdString(), text);
  for (const int code : {int{'A'}, int{'9'}, 0x70, 0x87, 0x25, 0x2e, 0xbf}) EXPECT_FALSE(HotKeyText(code, 0).isEmpty());
}

TEST(SettingsValues, NumbersAreTakenLeniently) {
  EXPECT_EQ(LenientNumber(u" -12x"_qs), -12);
  EXPECT_EQ(LenientNumber(u"99999999999"_qs), 2147483647);
  const std::tuple<const char*, int, const char*> moves[] = {
      {"3", 1, "4"}, {"0", -1, "0"}, {"-7", -1, "0"}, {"-7", 1, "0"}, {"x", 1, "1"}, {"2147483647", 1, "2147483647"}};
  for (const auto& [text, by, moved] : moves) EXPECT_EQ(MovedNumber(QString::fromUtf8(text), by).toStdString(), moved);
}

TEST(Settings, EveryControlIsSaidOnBothTabs) {
  SettingsWorld w;
  w.settles = true;
  w.Open([&](frmSettings& form) {
    EXPECT_EQ(w.Heard(), "say: Nastavení Obecné; and: Spustit po startu nezaškrtnuto");
    w.Play(
        "Tab > say: Horká klávesa: CTRL + ALT + T | Tab > say: Smazat horkou klávesu"
        " | Tab > say: Opakovat zvuk alarmu (0 = stále) 3 | Tab > say: Zvuk alarmu: /f/sound/alarm.wav"
        " | Tab > say: Procházet... | Tab > say: Alarm pro nový záznam: přesně | Down > say: 5 minut předem"
        " | Tab > say: Zobrazit dotaz při uzavření | Tab > say: Zvuk pro minutník: /f/sound/timer.wav"
        " | Tab > say: Procházet... | Tab > say: Opakovat zvuk minutníku nezaškrtnuto | Space > say: zaškrtnuto"
        " | Tab > say: OK | Tab > say: Storno | Ctrl+Tab > say: Google; and: Jméno pro přihlášení: jana"
        " | Tab > say: Heslo pro přihlášení: | Tab > say: Čas automatické synchronizace: 0"
        " | Ctrl+Shift+Tab > say: Obecné; and: Spustit po startu nezaškrtnuto");
    EXPECT_TRUE(form.tab1->isVisible() && !form.tab2->isVisible());
    EXPECT_EQ(form.Tag(), 1721);
  });
  EXPECT_TRUE(w.state.SettingsCancelled);
  EXPECT_EQ(w.setting.RepeatTimeout, 0);
  EXPECT_TRUE(w.world.profile.Written.isEmpty());
}

TEST(Settings, KeysOfTheHotKeyAndOfTheNumber) {
  SettingsWorld w;
  w.Open([&](frmSettings& form) {
    form.txtHotKey->setFocus();
    w.Play(
        "K > char: K | Space > char: K | F5 > say: F5 | Left > say: ŠIPKA VLEVO"
        // The keys that are held go up too.
        " | Alt+Delete > say: ALT + DELETE; say: ALT + DELETE");
    form.cmdDelHotKey->setFocus();
    w.Play("Space > say: Mažu");
    EXPECT_TRUE(form.txtHotKey->text().isEmpty());
    form.txtAlarmLoop->setFocus();
    w.Play(
        "Num++ > char: 4 | Down > char: 5 | Num+- > char: 4 | Up > char: 3 | + > char: 3 | 7 > say: 37 | - > say: 37-"
        " | Home > char: 3; say: 37-");
    form.txtAlarmLoop->setText(u"0"_qs);
    w.Play("Up > char: 0");
    form.cmdOK->click();
  });
  EXPECT_EQ(w.Stored("HotKeyCall") + w.Stored("AlarmLoop"), "00");
  EXPECT_EQ(w.world.keyboardHook.Watched, 0);
}

TEST(Settings, OkTakesAllInOrderAndNonsenseIsZero) {
  SettingsWorld w;
  const QTemporaryDir folder;
  w.Open([&](frmSettings& form) {
    form.chkStartUp->setChecked(true);
    form.txtAlarmLoop->setText(u"pořád"_qs);
    form.txtAutSync->setText(u"15 minut"_qs);
    form.cmbExitMode->setCurrentIndex(2);
    form.txtTimeOutSnd->clear();
    form.txtGoogleLoginName->setText(u"eva"_qs);
    form.cmdOK->click();
    EXPECT_FALSE(form.isVisible());
  });
  EXPECT_TRUE(w.world.shell.Autostart);
  EXPECT_EQ(w.Stored("AlarmLoop") + w.Stored("AutSync") + w.Stored("ExitMode") + w.Stored("User"), "0152eva");
  EXPECT_EQ(w.Stored("TimeOutSndFile"), "");
  EXPECT_EQ(w.order, QStringList(u"timer 15"_qs)) << "an untouched password goes nowhere";
  EXPECT_EQ(w.Stored("GoogleLog"), "-");
}

TEST(Settings, WhatCannotBeTakenIsToldAndLeavesEverything) {
  const QTemporaryDir folder;
  const struct {
    std::function<void(SettingsWorld&, frmSettings&)> spoil;
    QString message;
    const char* focus;
  } cases[] = {
      {[&](SettingsWorld&, frmSettings& form) { form.txtAlarmSnd->setText(folder.path()); },
       u"Zvukový soubor nebyl nalezen: "_qs + folder.path(), "txtAlarmSnd"},
      {[](SettingsWorld& w, frmSettings& form) {
         w.world.keyboardHook.Taken = 'K';
         form.txtHotKey->setFocus();
         w.Press("K");
       },
       u"Horkou klávesu K nelze použít. Drží ji jiný program, nebo ji prostředí nedovolí."_qs, "txtHotKey"},
      {[](SettingsWorld& w, frmSettings&) { w.world.shell.KeepsAutostart = true; },
       u"Spuštění po startu nelze nastavit."_qs, "chkStartUp"},
      {[](SettingsWorld& w, frmSettings&) { w.world.profile.Refuse = true; }, u"Nastavení nelze zapsat: "_qs + kIni,
       "cmdOK"},
  };
  for (const auto& test : cases) {
    SettingsWorld w;
    w.Open([&](frmSettings& form) {
      form.chkStartUp->setChecked(true);
      form.txtAutSync->setText(u"9"_qs);
      test.spoil(w, form);
      w.ExpectWarning(test.message);
      form.cmdOK->click();
      FormDriver::Settle();
      EXPECT_EQ(form.focusWidget()->objectName().toStdString(), test.focus);
      EXPECT_EQ(form.txtAutSync->text(), u"9"_qs) << "what was typed stays";
      EXPECT_EQ(form.txtHotKey->text(), u"CTRL + ALT + T"_qs);
    });
    EXPECT_EQ(w.setting.AutSync, 0);
    EXPECT_EQ(w.setting.HotKeyCall, kCtrlAltT);
    EXPECT_FALSE(w.world.shell.Autostart);
    EXPECT_TRUE(w.world.keyboardHook.Watched == -1 || w.world.keyboardHook.Watched == kCtrlAltT);
    EXPECT_TRUE(w.world.profile.Written.isEmpty());
  }
}

TEST(Settings, ThePasswordIsNeverSaidAndGoesToTheAgentAlone) {
  SettingsWorld w;
  w.state.OpenGoogleTab = true;
  w.handsOver = false;
  w.settles = true;
  w.Open([&](frmSettings& form) {
    EXPECT_EQ(w.Heard(), "say: Nastavení Google; and: Jméno pro přihlášení: jana");
    form.txtGoogleLoginPassword->setFocus();
    w.driver.Type(u"tajné"_qs);
    w.Play(
        "Left > char: * | Home > char: * | Shift+End > say: ***** | Ctrl+C > say: do schránky *****"
        " | Tab > say: Čas automatické synchronizace: 0 | Shift+Tab > say: Heslo pro přihlášení: *****");
    w.ExpectWarning(u"Nastavení je uloženo, heslo se ale nepodařilo předat. box"_qs);
    form.cmdOK->click();
    FormDriver::Settle();
    EXPECT_TRUE(form.txtGoogleLoginPassword->hasFocus());
    w.handsOver = true;
    form.cmdOK->click();
  });
  EXPECT_EQ(w.given, u"tajné"_qs);
  EXPECT_EQ(w.setting.GoogleLog, 5);
  EXPECT_FALSE(w.state.SettingsCancelled);
  EXPECT_FALSE(w.world.profile.Written.join(u' ').contains(u"tajné"_qs));
}

}  // namespace talnik::test
