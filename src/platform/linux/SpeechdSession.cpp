#include "platform/linux/SpeechdSession.h"

#include "platform/linux/SpeechText.h"

#include <algorithm>
#include <utility>

namespace talnik {

using std::chrono::milliseconds;

/// Nobody is to wait a second time for a worker that is stuck with an earlier text.
milliseconds SpeechCount::Believed(milliseconds patience) {
  if (!taken_ && until_.hasExpired()) return milliseconds(0);
  taken_ = false;
  return patience;
}

quint64 SpeechCount::Cut(int texts, milliseconds patience) {
  const std::scoped_lock lock(mutex_);
  until_ = QDeadlineTimer(Believed(patience));
  texts_ = texts;
  return ++turn_;
}

quint64 SpeechCount::Append(milliseconds patience) {
  const std::scoped_lock lock(mutex_);
  const milliseconds rest(texts_ > 0 ? std::max<qint64>(0, until_.remainingTime()) : 0);
  until_ = QDeadlineTimer(rest + Believed(patience));
  ++texts_;
  return turn_;
}

void SpeechCount::Taken() {
  const std::scoped_lock lock(mutex_);
  taken_ = true;
}

void SpeechCount::Grant(quint64 turn, milliseconds patience) {
  const std::scoped_lock lock(mutex_);
  if (turn == turn_) until_ = QDeadlineTimer(patience);
}

void SpeechCount::Done(quint64 turn) {
  const std::scoped_lock lock(mutex_);
  if (turn == turn_ && texts_ > 0) --texts_;
}

bool SpeechCount::IsSpeaking() const {
  const std::scoped_lock lock(mutex_);
  return texts_ > 0 && !until_.hasExpired();
}

SpeechdSession::SpeechdSession()
    : connection_([this](SpeechEvent event) { box_.Put([event](Wish& wish) { wish.events << event; }); }) {}

void SpeechdSession::Speak(Utterance utterance, Voice::Join join) {
  const bool cut = join == Voice::Join::Cut;
  if (!IsSpeakable(utterance.text)) {
    if (cut) Stop();
    return;
  }
  const milliseconds patience = PatienceFor(utterance.text);
  utterance.turn = cut ? count_.Cut(1, patience) : count_.Append(patience);
  box_.Put([&utterance, cut](Wish& wish) {
    if (cut) wish.utterances.clear();
    wish.cut |= cut;
    wish.utterances.push_back(std::move(utterance));
  });
}

void SpeechdSession::Stop() {
  count_.Cut(0, milliseconds(1000));
  box_.Put([](Wish& wish) {
    wish.utterances.clear();
    wish.cut = true;
  });
}

bool SpeechdSession::Connect() {
  const bool open = connection_.Open();
  support_ = open ? Voice::Support::There : Voice::Support::Missing;
  return open;
}

void SpeechdSession::Run() {
  Connect();
  while (!box_.IsClosed()) {
    if (std::optional<Wish> wish = box_.Wait(giveUp_)) Carry(std::move(*wish));
    if (message_ && giveUp_.hasExpired()) PieceDone();
    Next();
  }
  connection_.Close();
}

void SpeechdSession::Carry(Wish wish) {
  for (const SpeechEvent event : std::as_const(wish.events)) Obey(event);
  if (!wish.cut && wish.utterances.empty()) return;
  count_.Taken();
  if (wish.cut) {
    if (message_) connection_.Cancel();
    DropAll();
  }
  for (Utterance& utterance : wish.utterances) queue_.push_back(std::move(utterance));
}

void SpeechdSession::Obey(SpeechEvent event) {
  if (message_ != event.message) return;
  switch (event.kind) {
    case SpeechEvent::Begun:
      giveUp_ = QDeadlineTimer(patience_);
      count_.Grant(queue_.front().turn, patience_ + PatienceForRest());
      break;
    case SpeechEvent::Ended:
      PieceDone();
      break;
    case SpeechEvent::Cancelled:
      // Another program took the speech: what we had behind this is stale as well.
      DropAll();
      break;
  }
}

void SpeechdSession::Next() {
  while (!message_ && !queue_.empty()) {
    Utterance& utterance = queue_.front();
    const qsizetype end = PieceEnd(utterance.text, utterance.said);
    const QString piece = SpeakableText(utterance.text.mid(utterance.said, end - utterance.said));
    utterance.said = end;
    if (piece.isEmpty()) {
      PieceDone();
      continue;
    }
    patience_ = PatienceFor(piece);
    message_ = Send(utterance, piece);
    if (message_) {
      giveUp_ = QDeadlineTimer(patience_);
      count_.Grant(utterance.turn, patience_ + PatienceForRest());
    } else if (connection_.IsOpen()) {
      PieceDone();
    } else {
      DropAll();
    }
  }
}

std::optional<size_t> SpeechdSession::Send(const Utterance& utterance, const QString& piece) {
  const QByteArray bytes = piece.toUtf8();
  const auto say = [&] {
    return utterance.isCharacter ? connection_.SayCharacter(bytes) : connection_.Say(bytes, utterance.urgency);
  };
  const bool wasOpen = connection_.IsOpen();
  if (!Connect()) return std::nullopt;
  std::optional<size_t> message = say();
  if (!message && wasOpen) {
    // The daemon may have ended since the last text.
    connection_.Close();
    if (Connect()) message = say();
  }
  return message;
}

/// For all that is not being said yet.
milliseconds SpeechdSession::PatienceForRest() const {
  milliseconds patience(0);
  for (const Utterance& utterance : queue_) {
    const QStringView rest = QStringView(utterance.text).mid(utterance.said);
    if (!rest.isEmpty()) patience += PatienceFor(rest);
  }
  return patience;
}

void SpeechdSession::PieceDone() {
  message_.reset();
  giveUp_ = QDeadlineTimer(QDeadlineTimer::Forever);
  if (queue_.front().said < queue_.front().text.size()) return;
  count_.Done(queue_.front().turn);
  queue_.pop_front();
}

void SpeechdSession::DropAll() {
  for (const Utterance& utterance : queue_) count_.Done(utterance.turn);
  queue_.clear();
  message_.reset();
  giveUp_ = QDeadlineTimer(QDeadlineTimer::Forever);
}

}  // namespace talnik
