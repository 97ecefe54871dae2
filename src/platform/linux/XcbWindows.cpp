#include "platform/linux/LinuxShell.h"

#include <QGuiApplication>

#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace talnik {

namespace {

constexpr std::uint32_t LongestProperty = 4096;  // in units of four bytes

struct Free {
  void operator()(void* reply) const { std::free(reply); }
};

/// Reads the properties that the window manager and the programs leave on the display.
class WindowProperties {
 public:
  WindowProperties() {
    if (QGuiApplication::platformName() != u"xcb"_qs) return;
    auto* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    connection_ = display ? display->connection() : nullptr;
    if (connection_) root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  }

  bool Readable() const { return connection_ != nullptr; }
  xcb_window_t Root() const { return root_; }

  xcb_connection_t* Connection() const { return connection_; }

  /// 0 where nobody on the display has used the name yet.
  xcb_atom_t Atom(const char* name) const {
    const auto cookie = xcb_intern_atom(connection_, 1, static_cast<std::uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return atom ? atom->atom : xcb_atom_t{XCB_ATOM_NONE};
  }

  QByteArray Bytes(xcb_window_t window, const char* property) const {
    const xcb_atom_t atom = Atom(property);
    if (atom == XCB_ATOM_NONE) return {};
    const auto cookie = xcb_get_property(connection_, 0, window, atom, XCB_GET_PROPERTY_TYPE_ANY, 0, LongestProperty);
    const std::unique_ptr<xcb_get_property_reply_t, Free> reply(xcb_get_property_reply(connection_, cookie, nullptr));
    if (!reply) return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
  }

  std::vector<std::uint32_t> Numbers(xcb_window_t window, const char* property) const {
    const QByteArray bytes = Bytes(window, property);
    std::vector<std::uint32_t> numbers(static_cast<std::size_t>(bytes.size()) / sizeof(std::uint32_t));
    std::memcpy(numbers.data(), bytes.constData(), numbers.size() * sizeof(std::uint32_t));
    return numbers;
  }

  std::uint32_t Number(xcb_window_t window, const char* property) const {
    const auto numbers = Numbers(window, property);
    return numbers.empty() ? 0 : numbers.front();
  }

 private:
  xcb_connection_t* connection_ = nullptr;
  xcb_window_t root_ = 0;
};

}  // namespace

/// A window manager may refuse a program that asks for itself while the user is at work in another one; what a pager
/// asks for is the user's own choice.
void LinuxShell::BringToFront(quint64 window) {
  constexpr std::uint32_t pager = 2;
  const WindowProperties properties;
  if (!properties.Readable()) return;
  xcb_client_message_event_t wish{};
  wish.response_type = XCB_CLIENT_MESSAGE;
  wish.format = 32;
  wish.window = static_cast<xcb_window_t>(window);
  wish.type = properties.Atom("_NET_ACTIVE_WINDOW");
  wish.data.data32[0] = pager;
  if (wish.type == XCB_ATOM_NONE) return;
  xcb_send_event(properties.Connection(), 0, properties.Root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&wish));
  xcb_flush(properties.Connection());
}

ForeignWindowInfo LinuxShell::WindowWithFocus() {
  const WindowProperties properties;
  if (!properties.Readable()) return {};
  const std::uint32_t active = properties.Number(properties.Root(), "_NET_ACTIVE_WINDOW");
  const auto own = static_cast<std::uint32_t>(getpid());
  if (active == 0 || properties.Number(active, "_NET_WM_PID") == own) return {};
  const QByteArray name = properties.Bytes(active, "_NET_WM_NAME");
  return {active,
          name.isEmpty() ? QString::fromLocal8Bit(properties.Bytes(active, "WM_NAME")) : QString::fromUtf8(name)};
}

bool LinuxShell::WindowExists(quint64 handle) {
  const WindowProperties properties;
  if (!properties.Readable()) return false;
  // A program may keep a window that it has closed; the window manager does not.
  const auto windows = properties.Numbers(properties.Root(), "_NET_CLIENT_LIST");
  return std::find(windows.begin(), windows.end(), handle) != windows.end();
}

}  // namespace talnik
