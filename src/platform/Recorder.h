#pragma once

#include <QString>

#include <functional>

namespace talnik {

/// Records the default microphone into a WAV file, one recording at a time.
class Recorder {
 public:
  /// How a recording ended that nobody stopped. Behind all but the first the file holds what was recorded till then.
  enum class Ending {
    Failed,  ///< no microphone, no sound server, or a file that cannot be written: nothing was recorded
    Broken,  ///< the microphone or the sound server is gone
    NoRoom,  ///< the file cannot be written any further
    TooLong  ///< the longest time is over
  };

  virtual ~Recorder() = default;

  /// Starts recording into `path`, in the format of the WAV file `seed`, and returns at once. An older file at `path`
  /// gives way to the first sound, not before; without a sound there is no new file. `ended` runs once, on the
  /// caller's thread from the event loop, when the recording ends by itself; never behind Stop.
  virtual void Start(const QString& path, const QString& seed, std::function<void(Ending)> ended) = 0;

  /// Ends the recording and closes its file. False when nothing had been recorded.
  virtual bool Stop() = 0;

  /// From Start on until Stop or until the recording has ended by itself.
  virtual bool IsRecording() const = 0;
};

}  // namespace talnik
