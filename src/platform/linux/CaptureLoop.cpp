#include "platform/linux/CaptureLoop.h"

#include "platform/linux/PulseCapture.h"
#include "platform/linux/RecordingFile.h"

#include <utility>

namespace talnik {

CaptureLoop::CaptureLoop() = default;
CaptureLoop::~CaptureLoop() = default;

void CaptureLoop::Capture(const std::shared_ptr<RecordingFile>& file) {
  box_.Put([&](std::shared_ptr<RecordingFile>& wish) { wish = file; });
}

void CaptureLoop::SetListener(Listener listener) {
  const std::scoped_lock lock(listenerMutex_);
  listener_ = std::move(listener);
}

void CaptureLoop::Run() {
  loop_ = pa_mainloop_new();
  pa_mainloop_api* api = pa_mainloop_get_api(loop_);
  pa_io_event* wishes = api->io_new(
      api, box_.Descriptor(), PA_IO_EVENT_INPUT, [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void*) {},
      nullptr);
  while (!box_.IsClosed() && pa_mainloop_iterate(loop_, 1, nullptr) >= 0) {
    if (const auto wish = box_.Take()) {
      capture_.reset();
      file_ = *wish;
      if (file_) capture_ = std::make_unique<PulseCapture>(loop_, file_);
      if (capture_) capture_->Start();
    }
    const auto ending = capture_ ? capture_->Ended() : std::nullopt;
    if (!ending) continue;
    capture_.reset();
    const auto file = std::exchange(file_, nullptr);
    const std::scoped_lock lock(listenerMutex_);
    if (listener_) listener_(file, *ending);
  }
  capture_.reset();
  api->io_free(wishes);
  pa_mainloop_free(loop_);
}

}  // namespace talnik
