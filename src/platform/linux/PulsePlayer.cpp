#include "platform/linux/PulsePlayer.h"

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
  loop_ = pa_mainloop_new();
  pa_mainloop_api* api = pa_mainloop_get_api(loop_);
  pa_io_event* wishes = api->io_new(
      api, box_.Descriptor(), PA_IO_EVENT_INPUT, [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void*) {},
      nullptr);
  quint64 sound = 0;
  while (!box_.IsClosed() && pa_mainloop_iterate(loop_, 1, nullptr) >= 0) {
    if (const std::optional<Wish> wish = box_.Take()) {
      sound = wish->sound;
      Start(*wish);
    }
    if (!playback_ || !playback_->HasEnded()) continue;
    const bool failed = playback_->HasFailed();
    playback_.reset();
    const std::scoped_lock lock(listenerMutex_);
    if (listener_.ended) listener_.ended(sound, failed);
  }
  playback_.reset();
  api->io_free(wishes);
  pa_mainloop_free(loop_);
}

void PulsePlayer::Start(const Wish& wish) {
  playback_.reset();
  if (wish.path.isEmpty()) return;
  playback_ = std::make_unique<PulsePlayback>(loop_);
  if (!playback_->Open(wish.path)) return;
  {
    const std::scoped_lock lock(listenerMutex_);
    if (listener_.length) listener_.length(wish.sound, playback_->Milliseconds());
  }
  playback_->Start();
}

}  // namespace talnik
