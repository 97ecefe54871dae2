// mapped PROGRAM [ARGUMENT...]   Starts the program, waits for its first window on the screen, prints the milliseconds
// that took and the number of the process, and leaves it running.

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kPatienceMs = 20000;
constexpr int kSmallestWindow = 20;

template <class Type>
std::unique_ptr<Type, decltype(&std::free)> Owned(Type* reply) {
  return {reply, &std::free};
}

bool IsWindowOfAProgram(xcb_connection_t* x, xcb_window_t window) {
  const auto size = Owned(xcb_get_geometry_reply(x, xcb_get_geometry(x, window), nullptr));
  return size && size->width > kSmallestWindow && size->height > kSmallestWindow;
}

/// False when none comes.
bool WaitForAWindow(xcb_connection_t* x) {
  pollfd incoming{xcb_get_file_descriptor(x), POLLIN, 0};
  while (!xcb_connection_has_error(x)) {
    while (const auto event = Owned(xcb_poll_for_event(x))) {
      if ((event->response_type & 0x7F) != XCB_MAP_NOTIFY) continue;
      if (IsWindowOfAProgram(x, reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window)) return true;
    }
    if (poll(&incoming, 1, kPatienceMs) <= 0) return false;
  }
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  xcb_connection_t* x = xcb_connect(nullptr, nullptr);
  if (argc < 2 || xcb_connection_has_error(x)) return 2;
  const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
  const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(x, root, XCB_CW_EVENT_MASK, &events);
  Owned(xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));  // the server knows by now

  const auto start = std::chrono::steady_clock::now();
  const pid_t program = fork();
  if (program == 0) {
    const int nothing = open("/dev/null", O_RDWR);
    dup2(nothing, STDOUT_FILENO);
    dup2(nothing, STDERR_FILENO);
    execvp(argv[1], argv + 1);
    _exit(127);
  }
  const bool came = WaitForAWindow(x);
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  if (came) std::printf("%.1f %d\n", time.count(), program);
  xcb_disconnect(x);
  return came ? 0 : 1;
}
