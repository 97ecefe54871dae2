#pragma once

#include "platform/Recorder.h"
#include "platform/linux/PulseHandles.h"

#include <QByteArray>

#include <memory>
#include <optional>

namespace talnik {

class RecordingFile;

/// One recording: a connection to the sound server and a stream from its default microphone into a file. It lives in a
/// PulseAudio main loop; destroying it leaves the microphone.
class PulseCapture {
 public:
  PulseCapture(pa_mainloop* loop, std::shared_ptr<RecordingFile> file);
  PulseCapture(const PulseCapture&) = delete;
  PulseCapture& operator=(const PulseCapture&) = delete;

  /// Begins to look for the server and its microphone.
  void Start();

  /// How the recording has ended by itself, if it has.
  std::optional<Recorder::Ending> Ended() const { return ended_; }

 private:
  void OnContext();
  void OnServer(const pa_server_info* server);
  void OnSource(const pa_source_info* source, int last);
  void Connect();
  void OnStream();
  void Read();
  void Ask(pa_operation* question);
  /// The server has nothing more to give.
  void Lose();

  pa_mainloop* loop_;
  std::shared_ptr<RecordingFile> file_;
  PulseContext context_;
  PulseStream stream_;
  QByteArray microphone_;
  QByteArray defaultSink_;
  std::optional<Recorder::Ending> ended_;
};

}  // namespace talnik
