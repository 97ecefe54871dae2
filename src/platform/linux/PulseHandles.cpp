#include "platform/linux/PulseHandles.h"

namespace talnik {

void PulseEnd::operator()(pa_context* context) const {
  pa_context_set_state_callback(context, nullptr, nullptr);
  pa_context_disconnect(context);
  pa_context_unref(context);
}

void PulseEnd::operator()(pa_stream* stream) const {
  pa_stream_set_state_callback(stream, nullptr, nullptr);
  pa_stream_set_read_callback(stream, nullptr, nullptr);
  pa_stream_set_write_callback(stream, nullptr, nullptr);
  pa_stream_disconnect(stream);
  pa_stream_unref(stream);
}

PulseLoop::PulseLoop(int descriptor) : loop_(pa_mainloop_new()) {
  pa_mainloop_api* api = pa_mainloop_get_api(loop_);
  waker_ = api->io_new(
      api, descriptor, PA_IO_EVENT_INPUT, [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void*) {},
      nullptr);
}

PulseLoop::~PulseLoop() {
  pa_mainloop_get_api(loop_)->io_free(waker_);
  pa_mainloop_free(loop_);
}

}  // namespace talnik
