#include "platform/linux/Worker.h"

#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <limits>

namespace talnik {

Wakeup::Wakeup() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

Wakeup::~Wakeup() {
  if (descriptor_ >= 0) close(descriptor_);
}

void Wakeup::Ring() const {
  eventfd_write(descriptor_, 1);
}

void Wakeup::Quiet() const {
  eventfd_t rings = 0;
  eventfd_read(descriptor_, &rings);
}

void Wakeup::Sleep(QDeadlineTimer until, int other) const {
  pollfd watched[] = {{descriptor_, POLLIN, 0}, {other, POLLIN, 0}};
  // Rounded up, lest the last millisecond be spun away.
  const qint64 rest = until.isForever() ? -1 : until.hasExpired() ? 0 : until.remainingTime() + 1;
  poll(watched, 2, static_cast<int>(std::min<qint64>(rest, std::numeric_limits<int>::max())));
}

struct Worker::Finish {
  std::mutex mutex;
  std::condition_variable changed;
  bool done = false;
};

Worker::Worker(std::function<void()> work) : finish_(std::make_shared<Finish>()) {
  thread_ = std::thread([finish = finish_, work = std::move(work)] {
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    work();
    const std::scoped_lock lock(finish->mutex);
    finish->done = true;
    finish->changed.notify_all();
  });
}

Worker::~Worker() {
  if (!thread_.joinable()) return;
  std::unique_lock lock(finish_->mutex);
  const bool done = finish_->changed.wait_for(lock, std::chrono::milliseconds(300), [this] { return finish_->done; });
  lock.unlock();
  if (done) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

}  // namespace talnik
