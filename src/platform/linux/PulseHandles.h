#pragma once

#include <pulse/pulseaudio.h>

#include <memory>

namespace talnik {

struct PulseEnd {
  void operator()(pa_context* context) const;
  void operator()(pa_stream* stream) const;
};

/// A connection to the sound server, closed with its owner; no callback comes after that.
using PulseContext = std::unique_ptr<pa_context, PulseEnd>;
/// The same for a stream; it stands behind its context among the members.
using PulseStream = std::unique_ptr<pa_stream, PulseEnd>;

/// The main loop of a worker, which also wakes when there is something to read at a descriptor.
class PulseLoop {
 public:
  explicit PulseLoop(int descriptor);
  ~PulseLoop();
  PulseLoop(const PulseLoop&) = delete;
  PulseLoop& operator=(const PulseLoop&) = delete;

  pa_mainloop* Get() const { return loop_; }
  /// Waits for something to do and does it. False when the loop has ended.
  bool Turn() { return pa_mainloop_iterate(loop_, 1, nullptr) >= 0; }

 private:
  pa_mainloop* loop_;
  pa_io_event* waker_;
};

}  // namespace talnik
