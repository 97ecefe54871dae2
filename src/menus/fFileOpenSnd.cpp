#include "menus/fFileOpenSnd.h"

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
  speech().PlaySound(FileOfLine());
}

void fFileOpenSnd::Silence() {
  said_.stop();
  if (std::exchange(plays_, false)) speech().PlaySound(QString());
}

void fFileOpenSnd::hideEvent(QHideEvent* event) {
  Silence();
  fFileOpen::hideEvent(event);
}

}  // namespace talnik
