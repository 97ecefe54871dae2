#include "platform/linux/PulsePlayback.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace talnik {

namespace {

/// What the server holds of a sound ahead of its playing: enough for a busy machine, little enough for an exact end.
constexpr pa_usec_t Ahead = 100 * PA_USEC_PER_MSEC;

}  // namespace

PulsePlayback::PulsePlayback(pa_mainloop* loop) : loop_(loop), file_(nullptr, sf_close) {}

bool PulsePlayback::Open(const QString& path) {
  // Opening a pipe or a device could wait for ever.
  if (QFileInfo(path).isFile()) file_.reset(sf_open(QFile::encodeName(path).constData(), SFM_READ, &info_));
  if (!file_ || info_.frames <= 0 || info_.samplerate <= 0) Fail();
  return !ended_;
}

qint64 PulsePlayback::Milliseconds() const {
  return info_.frames * 1000 / info_.samplerate;
}

void PulsePlayback::Start() {
  context_.reset(pa_context_new(pa_mainloop_get_api(loop_), "Talník"));
  pa_context_set_state_callback(
      context_.get(), [](pa_context*, void* self) { static_cast<PulsePlayback*>(self)->OnContext(); }, this);
  if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) Fail();
}

void PulsePlayback::OnContext() {
  const pa_context_state_t state = pa_context_get_state(context_.get());
  if (!PA_CONTEXT_IS_GOOD(state)) return Fail();
  if (state != PA_CONTEXT_READY) return;
  pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<uint32_t>(info_.samplerate),
                        static_cast<uint8_t>(std::clamp(info_.channels, 0, 255))};
  stream_.reset(pa_stream_new(context_.get(), "Talník", &format, nullptr));
  if (!stream_) return Fail();
  pa_stream_set_state_callback(
      stream_.get(), [](pa_stream*, void* self) { static_cast<PulsePlayback*>(self)->OnStream(); }, this);
  pa_stream_set_write_callback(
      stream_.get(), [](pa_stream*, size_t bytes, void* self) { static_cast<PulsePlayback*>(self)->Fill(bytes); },
      this);
  constexpr auto byDefault = static_cast<uint32_t>(-1);
  pa_buffer_attr buffer{byDefault, static_cast<uint32_t>(pa_usec_to_bytes(Ahead, &format)), byDefault, byDefault,
                        byDefault};
  if (pa_stream_connect_playback(stream_.get(), nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0)
    Fail();
}

void PulsePlayback::OnStream() {
  if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream_.get()))) Fail();
}

void PulsePlayback::Fill(size_t bytes) {
  if (allRead_) return;
  const auto channels = static_cast<size_t>(info_.channels);
  const size_t frames = bytes / sizeof(float) / channels;
  samples_.resize(frames * channels);
  const sf_count_t read = sf_readf_float(file_.get(), samples_.data(), static_cast<sf_count_t>(frames));
  const auto got = static_cast<size_t>(std::max<sf_count_t>(0, read));
  if (got > 0 && pa_stream_write(stream_.get(), samples_.data(), got * channels * sizeof(float), nullptr, 0,
                                 PA_SEEK_RELATIVE) < 0) {
    return Fail();
  }
  if (got == frames) return;
  allRead_ = true;
  pa_operation* drained = pa_stream_drain(
      stream_.get(), [](pa_stream*, int, void* self) { static_cast<PulsePlayback*>(self)->ended_ = true; }, this);
  if (!drained) return Fail();
  pa_operation_unref(drained);
}

}  // namespace talnik
