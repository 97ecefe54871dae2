#include "menus/fFileOpenSnd.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace talnik {

namespace {

constexpr std::chrono::milliseconds SaidPoll(100);

}  // namespace

fFileOpenSnd::fFileOpenSnd(FormServices& services, Folders& folders, const PickerRequest& request, QWidget* parent)
    : fFileOpen(services, folders, request, parent), said_(this) {
  setObjectName(u"fFileOpenSnd"_qs);
  said_.setObjectName(u"SaidTimer"_qs);
  said_.setInterval(SaidPoll);
  connect(&said_, &QTimer::timeout, this, [this] { PlayWhenSaid(); });
  events().FormKeyDown([this](Key&) { Silence(); });
}

void fFileOpenSnd::LineWasSaid() {
  Silence();
  if (!FileOfLine().isEmpty()) said_.start();
}

void fFileOpenSnd::PlayWhenSaid() {
  if (speech().IsSpeaking()) return;
  said_.stop();
  plays_ = true;
  const QPointer<fFileOpenSnd> alive(this);
  speech().PlaySound(FileOfLine(), [alive, sound = ++sound_](Sound::Ending ending) {
    if (!alive || sound != alive->sound_) return;
    alive->plays_ = false;
    if (ending == Sound::Ending::Failed) alive->speech().Signal(Speech::Refused);
  });
}

void fFileOpenSnd::Silence() {
  said_.stop();
  if (!std::exchange(plays_, false)) return;
  ++sound_;
  speech().PlaySound(QString());
}

void fFileOpenSnd::hideEvent(QHideEvent* event) {
  Silence();
  fFileOpen::hideEvent(event);
}

}  // namespace talnik
