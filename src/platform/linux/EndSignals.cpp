#include "platform/linux/EndSignals.h"

#include <QSocketNotifier>

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <utility>

namespace talnik {

namespace {

constexpr int kEndSignals[] = {SIGTERM, SIGHUP, SIGINT};

/// A handler of signals can reach nothing but this.
std::atomic<int> endBell = -1;

void RingEndBell(int) {
  eventfd_write(endBell, 1);
}

}  // namespace

EndSignals::EndSignals(std::function<void()> asked) {
  endBell = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  if (endBell < 0) return;
  auto* bell = new QSocketNotifier(endBell, QSocketNotifier::Read, this);
  connect(bell, &QSocketNotifier::activated, this, [bell, asked = std::move(asked)] {
    bell->setEnabled(false);
    asked();
  });
  struct sigaction action {};
  action.sa_handler = RingEndBell;
  action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
  for (const int number : kEndSignals) sigaction(number, &action, nullptr);
}

EndSignals::~EndSignals() {
  for (const int number : kEndSignals) std::signal(number, SIG_DFL);
  if (const int descriptor = endBell.exchange(-1); descriptor >= 0) close(descriptor);
}

}  // namespace talnik
