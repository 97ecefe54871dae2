#pragma once

#include <QTimer>

#include <initializer_list>
#include <vector>

namespace talnik {

/// A job in the middle of the store must not meet an alarm that writes there too: giving up would undo its write.
class StoreTaken {
 public:
  StoreTaken(bool& taken, const bool& ended, std::initializer_list<QTimer*> timers) : taken_(taken), ended_(ended) {
    taken_ = true;
    for (QTimer* timer : timers) {
      if (timer->isActive()) stopped_.push_back(timer);
      timer->stop();
    }
  }
  ~StoreTaken() {
    taken_ = false;
    if (ended_) return;
    for (QTimer* timer : stopped_) timer->start();
  }
  StoreTaken(const StoreTaken&) = delete;
  StoreTaken& operator=(const StoreTaken&) = delete;

 private:
  bool& taken_;
  const bool& ended_;
  std::vector<QTimer*> stopped_;
};

}  // namespace talnik
