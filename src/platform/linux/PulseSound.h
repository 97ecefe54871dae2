#pragma once

#include "platform/Sound.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace talnik {

class PulsePlayer;
class Worker;

/// WAV files read by libsndfile and played by PulseAudio (or what stands in for it) on a worker thread. A server that
/// does not answer is given up a little after the sound should have ended; the next sounds then take no time for a
/// while.
class PulseSound : public QObject, public Sound {
  Q_OBJECT

 public:
  PulseSound();
  ~PulseSound() override;

  void Play(const QString& path, Finished finished) override;
  void Stop() override;

 private:
  void Finish(Ending ending);
  void OnLength(quint64 sound, qint64 milliseconds);
  void OnEnd(quint64 sound, bool failed);
  void OnNoAnswer();

  std::shared_ptr<PulsePlayer> player_;
  std::unique_ptr<Worker> worker_;
  Finished finished_;
  quint64 sound_ = 0;  ///< the number of the sound that plays or played last
  QTimer noAnswer_;
  QDeadlineTimer deaf_;
};

}  // namespace talnik
