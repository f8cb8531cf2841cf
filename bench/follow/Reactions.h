#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "bench/follow/Samples.h"

namespace pellar::bench {

// Something a watched window did, with the moment this process read it.
struct Reaction {
  enum class Kind { moved, drawn, mapped };
  Kind kind = Kind::moved;
  xcb_window_t window = XCB_NONE;
  int x = 0;  // of the window, or of the part drawn
  int y = 0;
  int width = 0;
  int height = 0;
  Clock::time_point at;
};

// Sees what windows do, on a connection and a thread of its own that only waits and takes the time, so that
// no cause is read together with its effect.
class Reactions {
 public:
  explicit Reactions(const std::string& display);
  ~Reactions();
  Reactions(const Reactions&) = delete;
  Reactions& operator=(const Reactions&) = delete;

  // Reports moves and drawing of a window from now on, also when others draw into it.
  void watch(xcb_window_t window);
  void forget();

  // Everything seen before is dropped.
  void clear();
  // The first reaction that matches, waiting for it until the deadline.
  std::optional<Reaction> first(const std::function<bool(const Reaction&)>& matches,
                                std::chrono::milliseconds deadline);
  // Returns when nothing was seen for `rest`, at the latest after a second.
  void waitForQuiet(std::chrono::milliseconds rest);

 private:
  void run();
  void take(const xcb_generic_event_t& event, Clock::time_point now);

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
  xcb_window_t own_ = XCB_NONE;  // takes the message that ends the thread
  std::uint8_t damageEvent_ = 0;
  std::vector<std::uint32_t> damages_;

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Reaction> seen_;
  std::uint64_t count_ = 0;

  std::thread thread_;
};

}  // namespace pellar::bench
