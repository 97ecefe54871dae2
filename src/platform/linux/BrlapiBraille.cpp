#include "platform/linux/BrlapiBraille.h"

#include "platform/linux/BrailleWindow.h"
#include "platform/linux/BrlapiConnection.h"
#include "platform/linux/Worker.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QWindow>

#include <atomic>
#include <chrono>
#include <future>

namespace talnik {

namespace {

constexpr std::chrono::milliseconds FirstSearch(50);
constexpr std::chrono::seconds SearchAgain(2);

/// The number by which whoever tells brltty of the focus knows our window; 0 for unknown. That of the environment is
/// the terminal's that the program was started from, good only where windows have none of their own.
int BrailleWindowNumber() {
  if (QGuiApplication::platformName() != u"xcb"_qs) return qEnvironmentVariableIntValue("WINDOWID");
  const QWindow* window = QGuiApplication::focusWindow();
  return window ? static_cast<int>(window->winId()) : 0;
}

}  // namespace

/// What the interface's thread wants on the line, and the worker that brings it there.
class BrlapiSession {
 public:
  bool IsPresent();
  void Show(const QString& text, int cursor);
  void SetActive(bool active);
  /// Another window of the program has the keyboard: a menu, too, is a window to whoever tells brltty of the focus.
  void FollowFocus() { HandOver(); }
  void Close() { box_.Close(); }

  /// The worker's thread.
  void Run();

 private:
  struct Wish {
    QString text;
    int cursor = Braille::NoCursor;
    bool active = false;
    int window = 0;
  };

  void HandOver();
  void Obey(const Wish& wish);
  bool Draw(const Wish& wish);
  void ReadKeys();

  // The interface's own.
  Wish wanted_;
  QDeadlineTimer searchAgain_{SearchAgain};
  bool asked_ = false;

  WishBox<Wish> box_;
  std::atomic<bool> present_ = false;
  std::promise<void> searched_;

  // The worker's own.
  BrlapiConnection connection_;
  BrailleWindow window_;
};

bool BrlapiSession::IsPresent() {
  if (!std::exchange(asked_, true)) searched_.get_future().wait_for(FirstSearch);
  if (!present_ && searchAgain_.hasExpired()) {
    searchAgain_ = QDeadlineTimer(SearchAgain);
    HandOver();
  }
  return present_;
}

void BrlapiSession::Show(const QString& text, int cursor) {
  wanted_.text = text;
  wanted_.cursor = cursor;
  HandOver();
}

void BrlapiSession::SetActive(bool active) {
  wanted_.active = active;
  HandOver();
}

void BrlapiSession::HandOver() {
  // Between two windows none has the keyboard; the line stays with the one before.
  if (const int window = BrailleWindowNumber(); window > 0) wanted_.window = window;
  box_.Put([this](Wish& wish) { wish = wanted_; });
}

void BrlapiSession::Run() {
  present_ = connection_.Open() && connection_.Cells() > 0;
  searched_.set_value();
  while (!box_.IsClosed()) {
    if (const std::optional<Wish> wish = box_.Wait(QDeadlineTimer(QDeadlineTimer::Forever), connection_.Descriptor())) {
      Obey(*wish);
    } else if (connection_.Descriptor() >= 0) {
      ReadKeys();
    }
    if (connection_.Descriptor() < 0) present_ = false;
  }
  connection_.Close();
}

void BrlapiSession::Obey(const Wish& wish) {
  window_.SetText(wish.text, wish.cursor);
  // The second try is for a server that was started anew.
  if (connection_.Open() && !Draw(wish) && connection_.Open()) Draw(wish);
}

bool BrlapiSession::Draw(const Wish& wish) {
  const int cells = connection_.Cells();
  present_ = cells > 0;
  if (cells == 0) return connection_.Descriptor() >= 0;
  window_.SetCells(cells);
  if (wish.active) return connection_.Enter(wish.window) && connection_.Write(window_.Visible(), window_.CursorCell());
  connection_.Leave();
  return connection_.Descriptor() >= 0;
}

void BrlapiSession::ReadKeys() {
  using Key = BrlapiConnection::Key;
  bool moved = false;
  for (Key key = connection_.ReadKey(); key != Key::None; key = connection_.ReadKey()) {
    if (key == Key::Left) window_.MoveLeft();
    if (key == Key::Right) window_.MoveRight();
    moved = true;
  }
  if (moved && connection_.Descriptor() >= 0) connection_.Write(window_.Visible(), window_.CursorCell());
}

BrlapiBraille::BrlapiBraille()
    : session_(std::make_shared<BrlapiSession>()),
      worker_(std::make_unique<Worker>([session = session_] { session->Run(); })) {
  followsFocus_ =
      QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, [session = session_] { session->FollowFocus(); });
}

BrlapiBraille::~BrlapiBraille() {
  QObject::disconnect(followsFocus_);
  session_->Close();
}

bool BrlapiBraille::IsPresent() const {
  return session_->IsPresent();
}

void BrlapiBraille::Show(const QString& text, int cursor) {
  session_->Show(text, cursor);
}

void BrlapiBraille::SetActive(bool active) {
  session_->SetActive(active);
}

}  // namespace talnik
