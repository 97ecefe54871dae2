#include "platform/linux/PulsePlayer.h"

#include "platform/linux/PulseHandles.h"
#include "platform/linux/PulsePlayback.h"

namespace talnik {

PulsePlayer::PulsePlayer() = default;
PulsePlayer::~PulsePlayer() = default;

void PulsePlayer::Play(const QString& path, quint64 sound) {
  box_.Put([&](Wish& wish) { wish = {path, sound}; });
}

void PulsePlayer::SetListener(Listener listener) {
  const std::scoped_lock lock(listenerMutex_);
  listener_ = std::move(listener);
}

void PulsePlayer::Run() {
  PulseLoop loop(box_.Descriptor());
  quint64 sound = 0;
  while (!box_.IsClosed() && loop.Turn()) {
    if (const std::optional<Wish> wish = box_.Take()) {
      sound = wish->sound;
      Start(*wish, loop.Get());
    }
    if (!playback_ || !playback_->HasEnded()) continue;
    const bool failed = playback_->HasFailed();
    playback_.reset();
    const std::scoped_lock lock(listenerMutex_);
    if (listener_.ended) listener_.ended(sound, failed);
  }
  playback_.reset();
}

void PulsePlayer::Start(const Wish& wish, pa_mainloop* loop) {
  playback_.reset();
  if (wish.path.isEmpty()) return;
  playback_ = std::make_unique<PulsePlayback>(loop);
  if (!playback_->Open(wish.path)) return;
  {
    const std::scoped_lock lock(listenerMutex_);
    if (listener_.length) listener_.length(wish.sound, playback_->Milliseconds());
  }
  playback_->Start();
}

}  // namespace talnik
