#pragma once

#include <QString>

namespace talnik {

/// Records the default microphone into a WAV file.
class Recorder {
 public:
  virtual ~Recorder() = default;

  /// Starts recording into `path`, in the format of the WAV file that lies there. False when there is no microphone or
  /// the file cannot be written; nothing is left behind then.
  virtual bool Start(const QString& path) = 0;

  /// Ends the recording and closes the file. False when what was recorded could not be kept.
  virtual bool Stop() = 0;

  virtual bool IsRecording() const = 0;
};

}  // namespace talnik
