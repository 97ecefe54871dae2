#include "platform/linux/PulseCapture.h"

#include "platform/linux/RecordingFile.h"

#include <utility>

namespace talnik {

namespace {

/// What the server gathers before it hands it on; no more than this is missing at the end.
constexpr pa_usec_t Fragment = 20 * PA_USEC_PER_MSEC;

}  // namespace

PulseCapture::PulseCapture(pa_mainloop* loop, std::shared_ptr<RecordingFile> file)
    : loop_(loop), file_(std::move(file)) {}

void PulseCapture::Start() {
  file_->ReadSeed();
  context_.reset(pa_context_new(pa_mainloop_get_api(loop_), "Talník"));
  pa_context_set_state_callback(
      context_.get(), [](pa_context*, void* self) { static_cast<PulseCapture*>(self)->OnContext(); }, this);
  if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOFLAGS, nullptr) < 0) Lose();
}

void PulseCapture::Lose() {
  ended_ = file_->Frames() > 0 ? Recorder::Ending::Broken : Recorder::Ending::Failed;
}

void PulseCapture::Ask(pa_operation* question) {
  if (!question) return Lose();
  pa_operation_unref(question);
}

void PulseCapture::OnContext() {
  const pa_context_state_t state = pa_context_get_state(context_.get());
  if (!PA_CONTEXT_IS_GOOD(state)) return Lose();
  if (state != PA_CONTEXT_READY) return;
  Ask(pa_context_get_server_info(
      context_.get(),
      [](pa_context*, const pa_server_info* server, void* self) { static_cast<PulseCapture*>(self)->OnServer(server); },
      this));
}

void PulseCapture::OnServer(const pa_server_info* server) {
  if (!server || !server->default_source_name) return Lose();
  microphone_ = server->default_source_name;
  defaultSink_ = server->default_sink_name;
  Ask(pa_context_get_source_info_by_name(
      context_.get(), microphone_.constData(),
      [](pa_context*, const pa_source_info* source, int last, void* self) {
        static_cast<PulseCapture*>(self)->OnSource(source, last);
      },
      this));
}

void PulseCapture::OnSource(const pa_source_info* source, int last) {
  if (last > 0) return;
  // Where there is no microphone, the server offers what its loudspeaker plays: the program's own voice.
  const bool isEcho = source && source->monitor_of_sink_name && defaultSink_ == source->monitor_of_sink_name;
  if (!source || isEcho) return Lose();
  Connect();
}

void PulseCapture::Connect() {
  pa_sample_spec format{PA_SAMPLE_FLOAT32NE, static_cast<uint32_t>(file_->Rate()),
                        static_cast<uint8_t>(file_->Channels())};
  stream_.reset(pa_stream_new(context_.get(), "Talník", &format, nullptr));
  if (!stream_) return Lose();
  pa_stream_set_state_callback(
      stream_.get(), [](pa_stream*, void* self) { static_cast<PulseCapture*>(self)->OnStream(); }, this);
  pa_stream_set_read_callback(
      stream_.get(), [](pa_stream*, size_t, void* self) { static_cast<PulseCapture*>(self)->Read(); }, this);
  constexpr auto byDefault = static_cast<uint32_t>(-1);
  pa_buffer_attr buffer{byDefault, byDefault, byDefault, byDefault,
                        static_cast<uint32_t>(pa_usec_to_bytes(Fragment, &format))};
  // A microphone that goes must not be replaced by what the loudspeaker plays.
  constexpr auto flags = static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
  if (pa_stream_connect_record(stream_.get(), microphone_.constData(), &buffer, flags) < 0) Lose();
}

void PulseCapture::OnStream() {
  if (!PA_STREAM_IS_GOOD(pa_stream_get_state(stream_.get()))) Lose();
}

void PulseCapture::Read() {
  const size_t frame = sizeof(float) * static_cast<size_t>(file_->Channels());
  while (!ended_ && pa_stream_readable_size(stream_.get()) > 0) {
    const void* data = nullptr;
    size_t bytes = 0;
    if (pa_stream_peek(stream_.get(), &data, &bytes) < 0) return Lose();
    if (bytes == 0) return;
    switch (file_->Append(static_cast<const float*>(data), bytes / frame)) {
      case RecordingFile::State::Unwritable:
        ended_ = file_->Frames() > 0 ? Recorder::Ending::NoRoom : Recorder::Ending::Failed;
        break;
      case RecordingFile::State::TooLong:
        ended_ = Recorder::Ending::TooLong;
        break;
      case RecordingFile::State::Open:
      case RecordingFile::State::Closed:
        break;
    }
    pa_stream_drop(stream_.get());
  }
}

}  // namespace talnik
