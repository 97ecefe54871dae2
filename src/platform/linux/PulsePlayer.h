#pragma once

#include "platform/linux/Worker.h"

#include <QString>

#include <functional>
#include <memory>
#include <mutex>

struct pa_mainloop;

namespace talnik {

class PulsePlayback;

/// Plays one sound at a time on the thread that is in Run. Nothing there blocks on the server: a sound is cut at once,
/// whatever the server does.
class PulsePlayer {
 public:
  /// What becomes of a sound, called on the player's thread.
  struct Listener {
    std::function<void(quint64 sound, qint64 milliseconds)> length;  ///< as soon as the file is open
    std::function<void(quint64 sound, bool failed)> ended;           ///< played to its end, or not playable
  };

  PulsePlayer();
  ~PulsePlayer();

  /// Cuts what plays; starts the file, unless the path is empty.
  void Play(const QString& path, quint64 sound);

  /// After this call the listener is not called any more.
  void SetListener(Listener listener);
  /// Lets Run end.
  void Close() { box_.Close(); }

  void Run();

 private:
  struct Wish {
    QString path;
    quint64 sound = 0;
  };

  void Start(const Wish& wish, pa_mainloop* loop);

  WishBox<Wish> box_;
  std::mutex listenerMutex_;
  Listener listener_;

  // The player's thread's own.
  std::unique_ptr<PulsePlayback> playback_;
};

}  // namespace talnik
