#include "platform/linux/PulseSound.h"

#include "platform/linux/PulsePlayer.h"
#include "platform/linux/Worker.h"

#include <chrono>
#include <utility>

namespace talnik {

namespace {

/// What a willing server may take beyond the length of a sound, a card that wakes up included.
constexpr std::chrono::milliseconds Patience(2000);
/// For how long a server that did not answer is not waited for again.
constexpr std::chrono::seconds Deafness(5);

}  // namespace

PulseSound::PulseSound()
    : player_(std::make_shared<PulsePlayer>()),
      worker_(std::make_unique<Worker>([player = player_] { player->Run(); })) {
  player_->SetListener({.length =
                            [this](quint64 sound, qint64 milliseconds) {
                              QMetaObject::invokeMethod(
                                  this, [this, sound, milliseconds] { OnLength(sound, milliseconds); },
                                  Qt::QueuedConnection);
                            },
                        .ended =
                            [this](quint64 sound, bool failed) {
                              QMetaObject::invokeMethod(
                                  this, [this, sound, failed] { OnEnd(sound, failed); }, Qt::QueuedConnection);
                            }});
  noAnswer_.setSingleShot(true);
  connect(&noAnswer_, &QTimer::timeout, this, &PulseSound::OnNoAnswer);
}

PulseSound::~PulseSound() {
  player_->SetListener({});
  player_->Close();
}

void PulseSound::Play(const QString& path, Finished finished) {
  Finish(Ending::Cut);
  finished_ = std::move(finished);
  const bool isPlayable = !path.isEmpty() && deaf_.hasExpired();
  player_->Play(isPlayable ? path : QString(), ++sound_);
  if (!isPlayable) return Finish(Ending::Failed);
  noAnswer_.start(Patience);
}

void PulseSound::Stop() {
  player_->Play(QString(), ++sound_);
  Finish(Ending::Cut);
}

/// Tells the caller from the event loop, once.
void PulseSound::Finish(Ending ending) {
  noAnswer_.stop();
  if (auto finished = std::exchange(finished_, nullptr)) {
    QMetaObject::invokeMethod(
        this, [finished = std::move(finished), ending] { finished(ending); }, Qt::QueuedConnection);
  }
}

void PulseSound::OnLength(quint64 sound, qint64 milliseconds) {
  if (sound == sound_ && noAnswer_.isActive()) noAnswer_.start(Patience + std::chrono::milliseconds(milliseconds));
}

void PulseSound::OnEnd(quint64 sound, bool failed) {
  if (sound == sound_) Finish(failed ? Ending::Failed : Ending::Played);
}

void PulseSound::OnNoAnswer() {
  deaf_ = QDeadlineTimer(Deafness);
  player_->Play(QString(), ++sound_);
  Finish(Ending::Failed);
}

}  // namespace talnik
