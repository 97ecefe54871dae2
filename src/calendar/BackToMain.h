#pragma once

#include "platform/Shell.h"

namespace talnik {

/// Waits for a window of another program that a command has opened, and for its end. It never gives up.
class BackToMain {
 public:
  /// A command has opened something: the wait begins anew.
  void Start();
  bool IsWaiting() const { return waiting_; }

  /// Looks once. True when the window has come and is gone, which ends the wait.
  bool Tick(Shell& shell);

 private:
  bool waiting_ = false;
  quint64 ForeignWindow = 0;  ///< 0 while none has been found
};

}  // namespace talnik
