#pragma once

#include <QtGlobal>

#include <functional>

namespace talnik {

/// Catches one key combination whichever program has the focus.
class KeyboardHook {
 public:
  virtual ~KeyboardHook() = default;

  /// Watches the combination `hotKey`: low word the virtual key code, high word the mask (1 Shift, 2 Ctrl, 4 Alt);
  /// 0 watches none. False when the system or another program does not let it be had.
  virtual bool Watch(int hotKey) = 0;

  /// The virtual key code of the key with a native scan code, whatever the layout makes of it; 0 when that is unknown.
  virtual int VirtualKey(quint32) const { return 0; }

  /// Runs when the watched key is released.
  std::function<void()> Released;
  /// Runs when a combination turns out later not to be had: where the user is asked, Watch cannot know his answer.
  std::function<void()> Refused;
};

}  // namespace talnik
