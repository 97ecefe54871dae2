#include "platform/linux/XcbKeyboardHook.h"

#include "platform/linux/PortalKeyboardHook.h"
#include "platform/linux/VirtualKeys.h"
#include "platform/none/None.h"

#include <QGuiApplication>
#include <QMetaObject>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
// A member of one of its structures bears the name of a keyword.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <memory>

namespace talnik {

namespace {

struct ShiftKey {
  int bit;
  std::uint16_t modifier;
};
constexpr ShiftKey ShiftKeys[] = {
    {HotKeyShiftBit, XCB_MOD_MASK_SHIFT}, {HotKeyCtrlBit, XCB_MOD_MASK_CONTROL}, {HotKeyAltBit, XCB_MOD_MASK_1}};
/// A grab names the locks that are on as well; Mod2 is Num Lock.
constexpr std::uint16_t Locks[] = {0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};

std::uint16_t Modifiers(int hotKey) {
  unsigned modifiers = 0;
  for (const ShiftKey& key : ShiftKeys) modifiers |= (HighWord(hotKey) & key.bit) != 0 ? key.modifier : 0U;
  return static_cast<std::uint16_t>(modifiers);
}

int MaskOf(std::uint16_t modifiers) {
  int mask = 0;
  for (const ShiftKey& key : ShiftKeys) mask |= (modifiers & key.modifier) != 0 ? key.bit : 0;
  return mask;
}

using KeySymbols = std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)>;

KeySymbols SymbolsOf(xcb_connection_t* connection) {
  return {xcb_key_symbols_alloc(connection), &xcb_key_symbols_free};
}

std::vector<std::uint8_t> KeyCodesOf(xcb_connection_t* connection, std::uint32_t symbol) {
  std::vector<std::uint8_t> codes;
  if (symbol == 0) return codes;
  const KeySymbols symbols = SymbolsOf(connection);
  if (!symbols) return codes;
  xcb_keycode_t* found = xcb_key_symbols_get_keycode(symbols.get(), symbol);
  for (const xcb_keycode_t* code = found; code && *code != XCB_NO_SYMBOL; ++code) codes.push_back(*code);
  std::free(found);
  return codes;
}

/// True when the key may lie elsewhere from now on.
bool TellsOfNewLayout(const xcb_generic_event_t& event, std::uint8_t firstXkbEvent) {
  const int type = event.response_type & 0x7f;
  if (type == XCB_MAPPING_NOTIFY) return true;
  // The second byte of such an event is its kind.
  return type == firstXkbEvent && (event.pad0 == XCB_XKB_NEW_KEYBOARD_NOTIFY || event.pad0 == XCB_XKB_MAP_NOTIFY);
}

xcb_connection_t* Display() {
  // Elsewhere the interface is there and leads nowhere.
  if (QGuiApplication::platformName() != u"xcb"_qs) return nullptr;
  auto* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return display ? display->connection() : nullptr;
}

}  // namespace

XcbKeyboardHook::XcbKeyboardHook(xcb_connection_t* connection) : connection_(connection) {
  const xcb_query_extension_reply_t* xkb = xcb_get_extension_data(connection_, &xcb_xkb_id);
  if (xkb && xkb->present) firstXkbEvent_ = xkb->first_event;
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  qGuiApp->installNativeEventFilter(this);
}

XcbKeyboardHook::~XcbKeyboardHook() {
  if (qGuiApp) Ungrab();
}

bool XcbKeyboardHook::Watch(int hotKey) {
  Ungrab();
  watch_.HotKeyValue = std::max(hotKey, 0);
  if (watch_.HotKeyValue == 0 || Grab()) return true;
  watch_.HotKeyValue = 0;
  return false;
}

/// The digits of many layouts are typed with Shift, so a key may bear its code on any of its levels.
int XcbKeyboardHook::VirtualKey(quint32 scanCode) const {
  constexpr int levels = 4;
  const KeySymbols symbols = SymbolsOf(connection_);
  if (!symbols || scanCode == 0 || scanCode > std::numeric_limits<xcb_keycode_t>::max()) return 0;
  for (int level = 0; level < levels; ++level) {
    const auto symbol = xcb_key_symbols_get_keysym(symbols.get(), static_cast<xcb_keycode_t>(scanCode), level);
    if (const int key = VirtualKeyOfSymbol(symbol)) return key;
  }
  return 0;
}

bool XcbKeyboardHook::Grab() {
  keyCodes_ = KeyCodesOf(connection_, KeySymbol(LowWord(watch_.HotKeyValue)));
  std::vector<xcb_void_cookie_t> cookies;
  for (const std::uint8_t code : keyCodes_) {
    for (const std::uint16_t lock : Locks) {
      const auto modifiers = static_cast<std::uint16_t>(Modifiers(watch_.HotKeyValue) | lock);
      cookies.push_back(
          xcb_grab_key_checked(connection_, 0, root_, modifiers, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
  }
  bool taken = keyCodes_.empty();
  for (const xcb_void_cookie_t cookie : cookies) {
    xcb_generic_error_t* error = xcb_request_check(connection_, cookie);
    taken |= error != nullptr;
    std::free(error);
  }
  if (taken) Ungrab();
  return !taken;
}

void XcbKeyboardHook::Ungrab() {
  for (const std::uint8_t code : keyCodes_) {
    for (const std::uint16_t lock : Locks) {
      xcb_ungrab_key(connection_, code, root_, static_cast<std::uint16_t>(Modifiers(watch_.HotKeyValue) | lock));
    }
  }
  if (!keyCodes_.empty()) xcb_flush(connection_);
  keyCodes_.clear();
  watch_.Forget();
}

void XcbKeyboardHook::FollowLayout() {
  // The news also comes when another keyboard is used, in the middle of the combination: nothing has moved then.
  if (KeyCodesOf(connection_, KeySymbol(LowWord(watch_.HotKeyValue))) == keyCodes_) return;
  Ungrab();
  Grab();
}

bool XcbKeyboardHook::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (watch_.HotKeyValue == 0 || eventType != "xcb_generic_event_t") return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const int type = event->response_type & 0x7f;
  if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
    const auto& key = *reinterpret_cast<const xcb_key_press_event_t*>(event);
    // What was grabbed is let through, so that the toolkit learns the time of the key: without it no window may come to
    // the front. It reaches no window of ours.
    return KeyEvent(key) && key.event != root_;
  }
  if (TellsOfNewLayout(*event, firstXkbEvent_)) {
    QMetaObject::invokeMethod(
        this, [this] { FollowLayout(); }, Qt::QueuedConnection);
  }
  return false;
}

/// True when the key is to be swallowed.
bool XcbKeyboardHook::KeyEvent(const xcb_key_press_event_t& event) {
  const bool watched = std::find(keyCodes_.begin(), keyCodes_.end(), event.detail) != keyCodes_.end();
  const HotKeyWatch::Verdict verdict = watch_.KeyboardProc({.key = watched ? LowWord(watch_.HotKeyValue) : 0,
                                                            .released = (event.response_type & 0x7f) == XCB_KEY_RELEASE,
                                                            .heldShift = MaskOf(event.state)});
  if (verdict.show) {
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (Released) Released();
        },
        Qt::QueuedConnection);
  }
  return verdict.swallow;
}

std::unique_ptr<KeyboardHook> MakeKeyboardHook() {
  if (xcb_connection_t* connection = Display()) return std::make_unique<XcbKeyboardHook>(connection);
  if (QGuiApplication::platformName().startsWith(u"wayland"_qs)) {
    return std::make_unique<PortalKeyboardHook>(QDBusConnection::sessionBus());
  }
  return std::make_unique<NoneKeyboardHook>();
}

void EnableDetectableAutoRepeat() {
  xcb_connection_t* connection = Display();
  if (!connection) return;
  const auto answer =
      xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                               XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
  xcb_discard_reply(connection, answer.sequence);
  xcb_flush(connection);
}

bool IsKeyHeld(std::uint32_t scanCode) {
  xcb_connection_t* connection = Display();
  if (!connection) return true;
  const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> keys(
      xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr), &std::free);
  constexpr std::uint32_t keysOfByte = 8;
  const std::uint32_t byte = scanCode / keysOfByte;
  if (!keys || byte >= std::size(keys->keys)) return true;
  return (keys->keys[byte] >> (scanCode % keysOfByte) & 1) != 0;
}

}  // namespace talnik
