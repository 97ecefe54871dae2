#pragma once

#include "platform/Braille.h"
#include "platform/KeyboardHook.h"
#include "platform/Recorder.h"
#include "platform/Sound.h"
#include "platform/TrayIcon.h"
#include "platform/Voice.h"

#include <QTimer>

#include <utility>

namespace talnik {

/// What stands in where the machine has nothing of the kind: silent, at once done, and honest about it.

class NoneVoice : public Voice {
 public:
  /// Silence is what was asked for.
  Support Supported() const override { return Support::There; }
  void Speak(const QString&, Join, Urgency) override {}
  void SpeakCharacter(const QString&, Join) override {}
  void Stop() override {}
  bool IsSpeaking() const override { return false; }
};

class NoneBraille : public Braille {
 public:
  bool IsPresent() const override { return false; }
  void Show(const QString&, int) override {}
  void SetActive(bool) override {}
};

class NoneSound : public Sound {
 public:
  void Play(const QString&, Finished finished) override {
    if (finished) QTimer::singleShot(0, [finished = std::move(finished)] { finished(Ending::Failed); });
  }
  void Stop() override {}
};

class NoneRecorder : public Recorder {
 public:
  void Start(const QString&, const QString&, std::function<void(Ending)> ended) override {
    QTimer::singleShot(0, [ended = std::move(ended)] { ended(Ending::Failed); });
  }
  bool Stop() override { return false; }
  bool IsRecording() const override { return false; }
};

class NoneTrayIcon : public TrayIcon {
 public:
  void Add(const QIcon&, const QString&) override {}
  void SetTip(const QString&) override {}
  void Delete() override {}
  bool IsThere() const override { return false; }
};

class NoneKeyboardHook : public KeyboardHook {
 public:
  bool Watch(int hotKey) override { return hotKey == 0; }
};

}  // namespace talnik
