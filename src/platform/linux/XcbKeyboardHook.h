#pragma once

#include "platform/KeyboardHook.h"

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

struct xcb_connection_t;
struct xcb_key_press_event_t;

namespace talnik {

/// The hot key as a passive grab of the X server. While one of the program's own menus is open it stays silent.
class XcbKeyboardHook : public QObject, public KeyboardHook, private QAbstractNativeEventFilter {
  Q_OBJECT

 public:
  explicit XcbKeyboardHook(xcb_connection_t* connection);
  ~XcbKeyboardHook() override;

  bool Watch(int hotKey) override;

 private:
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;
  void KeyEvent(const xcb_key_press_event_t& event);
  void FollowLayout();
  bool Grab();
  void Ungrab();

  xcb_connection_t* connection_;
  std::uint32_t root_ = 0;
  std::uint8_t firstXkbEvent_ = 0;
  int hotKey_ = 0;
  std::vector<std::uint8_t> keyCodes_;  ///< the grabbed keys
  bool held_ = false;                   ///< the combination is down and no other key came between
};

/// The hook of the display the program runs on; none where that has no such thing.
std::unique_ptr<KeyboardHook> MakeKeyboardHook();

/// Asks the display to send a held key as many presses and one release. Call it once, when the application exists.
void EnableDetectableAutoRepeat();

/// Whether the key of this native scan code is held now. True where the display cannot tell.
bool IsKeyHeld(std::uint32_t scanCode);

}  // namespace talnik
