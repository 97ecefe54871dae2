#pragma once

#include "platform/linux/PulseHandles.h"

#include <QString>

#include <sndfile.h>

#include <memory>
#include <vector>

namespace talnik {

/// One sound: a file, a connection to the server and a stream from the one into the other. It lives in a PulseAudio
/// main loop; destroying it cuts the sound.
class PulsePlayback {
 public:
  explicit PulsePlayback(pa_mainloop* loop);
  PulsePlayback(const PulsePlayback&) = delete;
  PulsePlayback& operator=(const PulsePlayback&) = delete;

  /// False when the file is no sound; the playback has ended then.
  bool Open(const QString& path);
  /// The length of the open file.
  qint64 Milliseconds() const;
  /// Begins to look for the server and to play.
  void Start();

  /// True when the sound has been heard to its end or cannot be.
  bool HasEnded() const { return ended_; }
  bool HasFailed() const { return failed_; }

 private:
  void OnContext();
  void OnStream();
  void Fill(size_t bytes);
  void Fail() { ended_ = failed_ = true; }

  pa_mainloop* loop_;
  std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file_;
  SF_INFO info_{};
  PulseContext context_;
  PulseStream stream_;
  std::vector<float> samples_;
  bool allRead_ = false;
  bool ended_ = false;
  bool failed_ = false;
};

}  // namespace talnik
