#include "platform/linux/PulseRecorder.h"

#include "platform/linux/CaptureLoop.h"
#include "platform/linux/RecordingFile.h"
#include "platform/linux/Worker.h"

#include <chrono>
#include <utility>

namespace talnik {

namespace {

/// For how long a microphone may give nothing; a card that wakes up takes less.
constexpr std::chrono::milliseconds RecorderPatience(3000);

}  // namespace

PulseRecorder::PulseRecorder(int longest)
    : longest_(longest),
      loop_(std::make_shared<CaptureLoop>()),
      worker_(std::make_unique<Worker>([loop = loop_] { loop->Run(); })) {
  loop_->SetListener([this](const std::shared_ptr<RecordingFile>& file, Ending ending) {
    QMetaObject::invokeMethod(
        this, [this, file, ending] { OnEnd(file, ending); }, Qt::QueuedConnection);
  });
  watch_.setInterval(RecorderPatience);
  connect(&watch_, &QTimer::timeout, this, &PulseRecorder::Listen);
}

PulseRecorder::~PulseRecorder() {
  PulseRecorder::Stop();
  loop_->SetListener({});
  loop_->Close();
}

void PulseRecorder::Start(const QString& path, const QString& seed, std::function<void(Ending)> ended) {
  Stop();
  file_ = std::make_shared<RecordingFile>(path, seed, longest_);
  ended_ = std::move(ended);
  framesBefore_ = 0;
  loop_->Capture(file_);
  watch_.start();
}

bool PulseRecorder::Stop() {
  watch_.stop();
  ended_ = nullptr;
  const auto file = std::exchange(file_, nullptr);
  if (!file) return false;
  loop_->Capture(nullptr);
  return file->Close();
}

void PulseRecorder::Listen() {
  const qint64 frames = file_->Frames();
  if (std::exchange(framesBefore_, frames) < frames) return;
  OnEnd(file_, frames > 0 ? Ending::Broken : Ending::Failed);
}

void PulseRecorder::OnEnd(const std::shared_ptr<RecordingFile>& file, Ending ending) {
  if (file != file_) return;
  const auto ended = std::exchange(ended_, nullptr);
  Stop();
  if (ended) ended(ending);
}

}  // namespace talnik
