#pragma once

#include "shell/VoiceDialog.h"
#include "shell/cSetting.h"
#include "support/FakePlatform.h"
#include "support/FormDriver.h"

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

  void Press(const char* key) { driver.Act(QString::fromLatin1(key)); }
  /// See FormDriver::Play.
  void Play(const char* script, QWidget* window = nullptr) {
    driver.Play(
        QString::fromUtf8(script), [this] { return Heard(); }, settles, window);
  }
  bool settles = false;  ///< what a key sets off may be queued
};

}  // namespace talnik::test
