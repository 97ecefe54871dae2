#pragma once

#include <QDeadlineTimer>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace talnik {

/// A descriptor that makes a sleeping thread look up.
class Wakeup {
 public:
  Wakeup();
  ~Wakeup();
  Wakeup(const Wakeup&) = delete;
  Wakeup& operator=(const Wakeup&) = delete;

  /// Readable from Ring until Quiet.
  int Descriptor() const { return descriptor_; }
  void Ring() const;
  void Quiet() const;
  /// Sleeps until it rings, until `other` can be read (-1 for none), or until the deadline.
  void Sleep(QDeadlineTimer until, int other) const;

 private:
  int descriptor_;
};

/// Where the interface's thread leaves its wish for a worker. Only the newest counts: whoever puts one may overwrite
/// what has not been taken yet. Nothing but Wait ever waits.
template <class Wish>
class WishBox {
 public:
  /// Lets `change` turn the waiting wish (a fresh one when none waits) into the newest.
  template <class Change>
  void Put(Change change) {
    {
      const std::scoped_lock lock(mutex_);
      if (!wish_) wish_ = Wish();
      change(*wish_);
    }
    wakeup_.Ring();
  }

  /// The wish that waits, if any.
  std::optional<Wish> Take() {
    wakeup_.Quiet();
    const std::scoped_lock lock(mutex_);
    return std::exchange(wish_, std::nullopt);
  }

  /// Waits for a wish, for the end of the box, for `other` to be readable or for the deadline; then takes what waits.
  std::optional<Wish> Wait(QDeadlineTimer until, int other = -1) {
    wakeup_.Sleep(until, other);
    return Take();
  }

  /// No more wishes will come, and the worker is to end.
  void Close() {
    {
      const std::scoped_lock lock(mutex_);
      closed_ = true;
    }
    wakeup_.Ring();
  }

  bool IsClosed() const {
    const std::scoped_lock lock(mutex_);
    return closed_;
  }

  /// Readable when Take is worth calling, for loops that wait by themselves.
  int Descriptor() const { return wakeup_.Descriptor(); }

 private:
  mutable std::mutex mutex_;
  std::optional<Wish> wish_;
  bool closed_ = false;
  Wakeup wakeup_;
};

/// A thread for talking to a daemon that may never answer. What it works on must be shared, not borrowed: a thread that
/// is stuck in such a call when the program goes is left behind.
class Worker {
 public:
  /// Starts `work` on the new thread; signals of broken pipes do not reach it.
  explicit Worker(std::function<void()> work);
  /// Gives `work`, which must have been told to end, a moment to do so.
  ~Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// Leaves the thread behind at once, however long it goes on.
  void Leave() { thread_.detach(); }

 private:
  struct Finish;
  std::shared_ptr<Finish> finish_;
  std::thread thread_;
};

}  // namespace talnik
