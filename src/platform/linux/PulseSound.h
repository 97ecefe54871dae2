#pragma once

#include "platform/Sound.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace talnik {

class PulsePlayer;
class Worker;

/// WAV files read by libsndfile and played by PulseAudio (or what stands in for it) on a worker thread. A server that
/// does not answer is given up a little after the sound should have ended, and takes no time until it answers again.
class PulseSound : public QObject, public Sound {
  Q_OBJECT

 public:
  PulseSound();
  ~PulseSound() override;

  void Play(const QString& path, std::function<void()> finished) override;
  void Stop() override;

 private:
  std::shared_ptr<PulsePlayer> player_;
  std::unique_ptr<Worker> worker_;
  std::function<void()> finished_;
  QTimer giveUp_;
};

}  // namespace talnik
