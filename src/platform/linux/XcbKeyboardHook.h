#pragma once

#include "platform/HotKey.h"
#include "platform/KeyboardHook.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

struct xcb_connection_t;
struct xcb_key_press_event_t;

namespace talnik {

/// The hot key as a passive grab of the X server. No such grab works while one of the program's own menus holds the
/// keyboard; the keys come to the program then, and are watched there.
class XcbKeyboardHook : public QObject, public KeyboardHook, private QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  explicit XcbKeyboardHook(xcb_connection_t* connection);
  ~XcbKeyboardHook() override;

  bool Watch(int hotKey) override;
  int VirtualKey(quint32 scanCode) const override;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  bool KeyEvent(const xcb_key_press_event_t& event);
  void FollowLayout();
  bool Grab();
  void Ungrab();

  xcb_connection_t* connection_;
  std::uint32_t root_ = 0;
  std::uint8_t firstXkbEvent_ = 0;
  HotKeyWatch watch_;
  std::vector<std::uint8_t> keyCodes_;  ///< the grabbed keys
};

/// The hook of the display the program runs on; none where that has no such thing.
std::unique_ptr<KeyboardHook> MakeKeyboardHook();

/// Asks the display to send a held key as many presses and one release. Call it once, when the application exists.
void EnableDetectableAutoRepeat();

/// Whether the key of this native scan code is held now. True where the display cannot tell.
bool IsKeyHeld(std::uint32_t scanCode);

}  // namespace talnik
