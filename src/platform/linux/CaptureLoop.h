#pragma once

#include "platform/Recorder.h"
#include "platform/linux/Worker.h"

#include <functional>
#include <memory>
#include <mutex>

namespace talnik {

class PulseCapture;
class RecordingFile;

/// Makes one recording at a time on the thread that is in Run. Nothing there blocks on the server.
class CaptureLoop {
 public:
  /// Called on the loop's thread when a recording has ended by itself.
  using Listener = std::function<void(const std::shared_ptr<RecordingFile>& file, Recorder::Ending ending)>;

  CaptureLoop();
  ~CaptureLoop();

  /// Leaves the recording that runs and begins one into `file`, unless it is null.
  void Capture(const std::shared_ptr<RecordingFile>& file);

  /// After this call the listener is not called any more.
  void SetListener(Listener listener);
  /// Lets Run end.
  void Close() { box_.Close(); }

  void Run();

 private:
  WishBox<std::shared_ptr<RecordingFile>> box_;
  std::mutex listenerMutex_;
  Listener listener_;

  // The loop's thread's own.
  std::shared_ptr<RecordingFile> file_;
  std::unique_ptr<PulseCapture> capture_;
};

}  // namespace talnik
