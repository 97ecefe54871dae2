#pragma once

#include <QString>

#include <functional>

namespace talnik {

/// Plays WAV files, one at a time.
class Sound {
 public:
  enum class Ending {
    Played,  ///< heard to its end
    Cut,     ///< by Stop or by the next sound
    Failed   ///< no sound, or nothing to play it with
  };
  using Finished = std::function<void(Ending)>;

  virtual ~Sound() = default;

  /// Starts `path` from its beginning and cuts the sound that plays. `finished`, which may be empty, runs once on the
  /// caller's thread, from the event loop, when the sound has ended, was cut, or could not be played; a sound that
  /// cannot be played takes no time.
  virtual void Play(const QString& path, Finished finished) = 0;

  virtual void Stop() = 0;
};

}  // namespace talnik
