#pragma once

#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

#include <QKeySequence>

#include <gtest/gtest.h>

#include <string>

namespace talnik::test {

/// The services of a window over fakes, and a user at the keyboard.
struct FormWorld {
  FakeWorld world;
  Speech speech{&world.voice, world.braille, world.sound, u"/s/"_qs};
  CommonSettings look;
  cSetting setting{world.profile, world.shell};
  FormServices services{speech, dialogs, world.clock, look, setting};
  Dialogs dialogs{services};
  FormDriver driver;

  /// What was heard since the last call: "say: a; sound: end.wav".
  std::string Heard() { return world.Heard().join(u"; "_qs).toStdString(); }

  /// A key by its name: "Ctrl+Right", "Num++".
  void Press(const char* key) {
    const QKeyCombination combination = QKeySequence::fromString(QString::fromLatin1(key))[0];
    driver.Press(combination.key(), combination.keyboardModifiers());
  }

  /// Presses one key after the other and expects what each is answered with: "Down > say: 01 | Tab > say: Storno".
  void Play(const char* script) {
    for (const QString& step : QString::fromUtf8(script).split(u" | "_qs)) {
      const QString key = step.section(u" >"_qs, 0, 0);
      Heard();
      Press(key.toLatin1());
      if (settles) FormDriver::Settle();
      EXPECT_EQ(Heard(), step.mid(key.size() + 3).toStdString()) << key.toStdString() << " in " << script;
    }
  }
  bool settles = false;  ///< what a key sets off may be queued
};

}  // namespace talnik::test
