#pragma once

#include "platform/Voice.h"
#include "platform/linux/SpeechdConnection.h"
#include "platform/linux/Worker.h"

#include <QDeadlineTimer>
#include <QList>
#include <QString>

#include <atomic>
#include <chrono>
#include <deque>
#include <mutex>
#include <optional>

namespace talnik {

/// How many texts are still to be heard. Seen from both threads; what ends of a turn that was cut no longer counts.
class SpeechCount {
 public:
  /// A new turn: the earlier texts are forgotten, `texts` more are to be heard, in `patience` at the latest. Returns
  /// the number of the turn.
  quint64 Cut(int texts, std::chrono::milliseconds patience);
  /// One more text behind those of this turn.
  quint64 Append(std::chrono::milliseconds patience);

  /// The worker has what was handed over so far.
  void Taken();
  /// What is left of the turn begins to be said now and takes `patience` at the latest.
  void Grant(quint64 turn, std::chrono::milliseconds patience);
  /// One text of the turn has been heard or given up.
  void Done(quint64 turn);

  bool IsSpeaking() const;

 private:
  std::chrono::milliseconds Believed(std::chrono::milliseconds patience);

  mutable std::mutex mutex_;
  quint64 turn_ = 0;
  int texts_ = 0;
  bool taken_ = true;
  QDeadlineTimer until_;
};

/// The speech of one program. The interface's thread hands over texts; Run sends them on, one message at a time, each
/// when the one before has ended: so what is appended is heard behind what is said, and everything can be cut at once.
class SpeechdSession {
 public:
  struct Utterance {
    QString text;
    bool isCharacter = false;
    Voice::Urgency urgency = Voice::Urgency::Text;
    quint64 turn = 0;
    qsizetype said = 0;  ///< where the next piece begins
  };

  SpeechdSession();

  /// Hands a text over; an empty one counts as silence.
  void Speak(Utterance utterance, Voice::Join join);
  void Stop();
  bool IsSpeaking() const { return count_.IsSpeaking(); }
  Voice::Support Supported() const { return support_; }
  /// Lets Run end.
  void Close() { box_.Close(); }

  /// The worker's thread.
  void Run();

 private:
  struct Wish {
    bool cut = false;
    std::deque<Utterance> utterances;
    QList<SpeechEvent> events;
  };

  void Carry(Wish wish);
  void Obey(SpeechEvent event);
  void Next();
  bool Connect();
  std::optional<size_t> Send(const Utterance& utterance, const QString& piece);
  std::chrono::milliseconds PatienceForRest() const;
  void PieceDone();
  void DropAll();

  SpeechCount count_;
  WishBox<Wish> box_;
  std::atomic<Voice::Support> support_ = Voice::Support::Unknown;

  // The worker's own.
  SpeechdConnection connection_;
  std::deque<Utterance> queue_;
  std::optional<size_t> message_;         ///< the piece of the first utterance that is being said
  std::chrono::milliseconds patience_{};  ///< for that piece
  QDeadlineTimer giveUp_{QDeadlineTimer::Forever};
};

}  // namespace talnik
