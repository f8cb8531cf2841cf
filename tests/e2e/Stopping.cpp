#include "tests/e2e/Stopping.h"

#include <poll.h>
#include <xcb/xcbext.h>

#include <chrono>
#include <csignal>

#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

// Within a moment.
bool serverAnswers(xcb_connection_t* connection) {
  constexpr std::chrono::milliseconds moment{300};
  const auto asked = xcb_get_input_focus(connection);
  xcb_flush(connection);
  const auto end = std::chrono::steady_clock::now() + moment;
  while (std::chrono::steady_clock::now() < end) {
    void* reply = nullptr;
    if (xcb_poll_for_reply(connection, asked.sequence, &reply, nullptr) == 1)
      return XReply<void>(reply) != nullptr;
    pollfd readable{xcb_get_file_descriptor(connection), POLLIN, 0};
    poll(&readable, 1, static_cast<int>(moment.count()));
  }
  xcb_discard_reply(connection, asked.sequence);
  return false;
}

}  // namespace

void stop(const Process& program, XObserver& observer) {
  auto* const connection = observer.connection();
  for (;;) {
    xcb_grab_server(connection);
    observer.fence();
    program.signal(SIGSTOP);
    xcb_ungrab_server(connection);
    // What it has asked for may come behind what is asked first.
    if (serverAnswers(connection) && serverAnswers(connection) && serverAnswers(connection)) return;
    program.signal(SIGCONT);
    observer.fence();
  }
}

}  // namespace pellar::e2e
