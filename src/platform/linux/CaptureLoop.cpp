#include "platform/linux/CaptureLoop.h"

#include "platform/linux/PulseCapture.h"
#include "platform/linux/PulseHandles.h"
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
  PulseLoop loop(box_.Descriptor());
  while (!box_.IsClosed() && loop.Turn()) {
    if (const auto wish = box_.Take()) {
      capture_.reset();
      file_ = *wish;
      if (file_) capture_ = std::make_unique<PulseCapture>(loop.Get(), file_);
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
}

}  // namespace talnik
