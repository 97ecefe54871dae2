#include "platform/linux/SpeechdConnection.h"

#include <libspeechd.h>
#include <pthread.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <mutex>

namespace talnik {

namespace {

/// The library hands its events to a plain function, with the number of the client as the only hint whose they are.
class Addressees {
 public:
  static Addressees& Of() {
    // Left alone at the end: a thread stuck in the library may outlive everything.
    static auto* const addressees = new Addressees;
    return *addressees;
  }

  void Enter(size_t client, std::weak_ptr<SpeechdConnection::Listener> listener) {
    const std::scoped_lock lock(mutex_);
    listeners_[client] = std::move(listener);
  }

  void Deliver(size_t client, SpeechEvent event) {
    std::shared_ptr<SpeechdConnection::Listener> listener;
    {
      const std::scoped_lock lock(mutex_);
      const auto found = listeners_.find(client);
      if (found != listeners_.end()) listener = found->second.lock();
    }
    if (listener) (*listener)(event);
  }

 private:
  std::mutex mutex_;
  std::map<size_t, std::weak_ptr<SpeechdConnection::Listener>> listeners_;
};

void OnSpeechdEvent(size_t message, size_t client, SPDNotificationType type) {
  // The library ends its thread by cancelling it, which must not happen in the middle of our code.
  int state = 0;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state);
  const auto kind = type == SPD_EVENT_BEGIN ? SpeechEvent::Begun
                    : type == SPD_EVENT_END ? SpeechEvent::Ended
                                            : SpeechEvent::Cancelled;
  Addressees::Of().Deliver(client, {message, kind});
  pthread_setcancelstate(state, nullptr);
}

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};
using LibraryText = std::unique_ptr<char, FreeText>;

struct FreeAddress {
  void operator()(SPDConnectionAddress* address) const { SPDConnectionAddress__free(address); }
};

}  // namespace

struct SpeechdConnection::Link {
  explicit Link(SPDConnection* opened) : connection(opened) {}
  ~Link() { spd_close(connection); }
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;
  SPDConnection* connection;
};

SpeechdConnection::SpeechdConnection(Listener listener) : listener_(std::make_shared<Listener>(std::move(listener))) {}

SpeechdConnection::~SpeechdConnection() = default;

bool SpeechdConnection::Open() {
  if (link_ || Connect(false)) return true;
  // A given address is somebody's choice of daemon; another one must not be started beside it. And a machine that
  // cannot start one is not asked to at every text.
  if (qEnvironmentVariableIsSet("SPEECHD_ADDRESS") || !startAgain_.hasExpired()) return false;
  startAgain_ = QDeadlineTimer(std::chrono::seconds(10));
  return Connect(true);
}

bool SpeechdConnection::Connect(bool start) {
  char* text = nullptr;
  const std::unique_ptr<SPDConnectionAddress, FreeAddress> address(spd_get_default_address(&text));
  const LibraryText badAddress(text);
  if (!address) return false;
  text = nullptr;
  SPDConnection* connection =
      spd_open2("talnik", "main", nullptr, SPD_MODE_THREADED, address.get(), start ? 1 : 0, &text);
  const LibraryText failure(text);
  if (!connection) return false;
  link_ = std::make_unique<Link>(connection);
  SetUp();
  return true;
}

void SpeechdConnection::SetUp() {
  SPDConnection* connection = link_->connection;
  Addressees::Of().Enter(static_cast<size_t>(spd_get_client_id(connection)), listener_);
  connection->callback_begin = connection->callback_end = connection->callback_cancel = OnSpeechdEvent;
  for (const SPDNotification wanted : {SPD_BEGIN, SPD_END, SPD_CANCEL}) spd_set_notification_on(connection, wanted);
  // Voice, rate and pitch are the user's; only the language is that of our texts, unless theirs is a kind of it.
  const LibraryText language(spd_get_language(connection));
  if (!language || !QByteArray(language.get()).startsWith("cs")) spd_set_language(connection, "cs");
}

void SpeechdConnection::Close() {
  link_.reset();
}

std::optional<size_t> SpeechdConnection::Say(const QByteArray& text, Voice::Urgency urgency) {
  const SPDPriority priority = urgency == Voice::Urgency::Important ? SPD_IMPORTANT : SPD_TEXT;
  const int message = spd_say(link_->connection, priority, text.constData());
  return message > 0 ? std::optional(static_cast<size_t>(message)) : std::nullopt;
}

std::optional<size_t> SpeechdConnection::SayCharacter(const QByteArray& character) {
  // spd_char does not tell the message's number; the reply does: "225-17\r\n225 OK MESSAGE QUEUED".
  if (spd_execute_command(link_->connection, "SET SELF PRIORITY TEXT") != 0) return std::nullopt;
  const QByteArray command = "CHAR " + character;
  char* text = nullptr;
  const int result = spd_execute_command_with_reply(link_->connection, command.constData(), &text);
  const LibraryText reply(text);
  if (result != 0 || !reply) return std::nullopt;
  const QByteArray answer(reply.get());
  const qsizetype number = answer.indexOf('-') + 1;
  bool isNumber = false;
  const size_t message = answer.mid(number, answer.indexOf('\n') - number).trimmed().toULongLong(&isNumber);
  return isNumber ? std::optional(message) : std::nullopt;
}

void SpeechdConnection::Cancel() {
  if (link_) spd_cancel(link_->connection);
}

}  // namespace talnik
