#pragma once

#include "platform/Voice.h"

#include <QByteArray>
#include <QDeadlineTimer>

#include <functional>
#include <memory>
#include <optional>

namespace talnik {

/// What the daemon tells of a message of ours.
struct SpeechEvent {
  enum Kind { Begun, Ended, Cancelled };
  size_t message = 0;
  Kind kind = Begun;
};

/// One connection to speech-dispatcher, opened when it is needed and anew when it broke. Every call may block for ever.
class SpeechdConnection {
 public:
  /// Receives the events, on a thread of the library; an event may come before the call that it belongs to has
  /// returned.
  using Listener = std::function<void(SpeechEvent)>;

  explicit SpeechdConnection(Listener listener);
  ~SpeechdConnection();
  SpeechdConnection(const SpeechdConnection&) = delete;
  SpeechdConnection& operator=(const SpeechdConnection&) = delete;

  /// Connects when there is no connection. False when there is no daemon.
  bool Open();
  void Close();
  bool IsOpen() const { return link_ != nullptr; }

  /// Say a text, or a single character by its name. The connection is open, and neither is empty. The message's
  /// number, or nothing when it was not taken.
  std::optional<size_t> Say(const QByteArray& text, Voice::Urgency urgency);
  std::optional<size_t> SayCharacter(const QByteArray& character);

  /// Ends what is being said for us and forgets what waits.
  void Cancel();

 private:
  struct Link;
  bool Connect(bool start);
  void SetUp();

  std::shared_ptr<Listener> listener_;
  std::unique_ptr<Link> link_;
  QDeadlineTimer startAgain_;
};

}  // namespace talnik
