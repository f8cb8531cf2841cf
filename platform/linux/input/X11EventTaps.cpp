#include "platform/linux/input/X11EventTaps.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <thread>
#include <utility>

#include "core/Log.h"
#include "platform/MainLoop.h"
#include "platform/linux/input/KeyDecision.h"
#include "platform/linux/input/X11KeyGrabs.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/ServerSync.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

// As long as the desktop's keyboard may wait for a main thread that is busy.
constexpr std::chrono::milliseconds keyPatience{100};

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

class KeyTap final : public EventTap {
 public:
  KeyTap(MainLoop& loop, Connection connection, X11KeyGrabs grabs, EventTaps::Handler handler)
      : loop_(loop),
        connection_(std::move(connection)),
        grabs_(std::move(grabs)),
        handler_(std::make_shared<EventTaps::Handler>(std::move(handler))),
        end_(eventfd(0, EFD_CLOEXEC)),
        thread_([this, weakHandler = std::weak_ptr(handler_)] { run(weakHandler); }) {}

  ~KeyTap() override {
    {
      const std::lock_guard lock(mutex_);
      ending_ = true;
      if (pending_) pending_->abandon();
    }
    const std::uint64_t one = 1;
    // A counter that starts at zero takes one.
    static_cast<void>(!write(end_, &one, sizeof one));
    thread_.join();
    close(end_);
  }
  KeyTap(const KeyTap&) = delete;
  KeyTap& operator=(const KeyTap&) = delete;

  // The grab stays, since it may not be had again. Whether the tap listens is looked up on the main thread,
  // in the key's turn: a press may come while the strip is being shown, which the user sees before the turn
  // ends.
  void setListening(bool listens) override { *listens_ = listens; }

 private:
  using WeakHandler = std::weak_ptr<EventTaps::Handler>;

  void run(const WeakHandler& handler) {
    while (xcb_connection_has_error(connection_.get()) == 0) {
      while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())})
        take(*event, handler);
      std::array<pollfd, 2> inputs{pollfd{xcb_get_file_descriptor(connection_.get()), POLLIN, 0},
                                   pollfd{end_, POLLIN, 0}};
      poll(inputs.data(), inputs.size(), -1);
      if (inputs[1].revents != 0) break;
    }
    // A server drops what it has not read of a client that hangs up, and with it the key that was let go
    // last.
    syncWithServer(connection_.get());
  }

  void take(const xcb_generic_event_t& event, const WeakHandler& handler) {
    const int type = eventType(event);
    if (type == XCB_KEY_PRESS) {
      const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(event);
      grabs_.settle(press, ask(grabs_.event(press), handler));
    } else if (type == XCB_MAPPING_NOTIFY) {
      const bool had = std::exchange(taken_, grabs_.take());
      if (had && !taken_)
        Log::write("the shortcut does nothing on the new keyboard layout: another program has its key");
    }
  }

  // Whether the main thread wants the key swallowed.
  bool ask(const TapEvent& event, const WeakHandler& weakHandler) {
    const auto decision = std::make_shared<KeyDecision>();
    {
      const std::lock_guard lock(mutex_);
      if (ending_) return false;
      pending_ = decision;
    }
    loop_.post([decision, event, weakHandler, listens = listens_] {
      const auto handler = weakHandler.lock();
      if (!handler) return decision->abandon();
      decision->answer([&] { return *listens && (*handler)(event); });
    });
    const bool swallow = decision->wait(keyPatience);
    const std::lock_guard lock(mutex_);
    pending_.reset();
    return swallow;
  }

  MainLoop& loop_;
  Connection connection_;
  X11KeyGrabs grabs_;  // the thread's own, as its neighbours, once it runs
  bool taken_ = true;
  std::shared_ptr<bool> listens_ = std::make_shared<bool>(true);  // the main thread's
  std::shared_ptr<EventTaps::Handler> handler_;                   // called and dropped on the main thread
  int end_;
  std::mutex mutex_;
  bool ending_ = false;                   // guarded by mutex_, as pending_
  std::shared_ptr<KeyDecision> pending_;  // what the thread waits for
  std::thread thread_;                    // depends-on: everything above
};

xcb_window_t rootOf(xcb_connection_t* connection, int screenNumber) {
  auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection));
  for (; screenNumber > 0 && screen.rem > 1; --screenNumber) xcb_screen_next(&screen);
  return screen.data->root;
}

}  // namespace

std::unique_ptr<EventTap> X11EventTaps::tapKeyDowns(const KeyCombination& wanted, Handler handler) {
  int screenNumber = 0;
  Connection connection(xcb_connect(nullptr, &screenNumber));
  if (xcb_connection_has_error(connection.get()) != 0) return nullptr;
  X11KeyGrabs grabs(connection.get(), rootOf(connection.get(), screenNumber), wanted);
  if (!grabs.take()) return nullptr;
  return std::make_unique<KeyTap>(loop_, std::move(connection), std::move(grabs), std::move(handler));
}

}  // namespace pellar
