#include "platform/linux/panel/KeyboardWatch.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace pellar {
namespace {

constexpr std::chrono::seconds mainThreadPatience{1};

}  // namespace

struct KeyboardWatch::State {
  std::mutex mutex;
  std::condition_variable changed;
  bool ended = false;
  bool answered = false;
};

void KeyboardWatch::begin() {
  end();
  state_ = std::make_shared<State>();
  thread_.post([state = state_, connection = connection_, &loop = loop_] { watch(state, connection, loop); });
}

void KeyboardWatch::end() {
  if (!state_) return;
  const auto state = std::exchange(state_, nullptr);
  const std::lock_guard lock(state->mutex);
  state->ended = true;
  state->changed.notify_all();
}

void KeyboardWatch::watch(const std::shared_ptr<State>& state, xcb_connection_t* connection, MainLoop& loop) {
  std::unique_lock lock(state->mutex);
  while (!state->ended) {
    state->answered = false;
    loop.post([state] {
      const std::lock_guard answering(state->mutex);
      state->answered = true;
    });
    state->changed.wait_for(lock, mainThreadPatience, [&] { return state->ended; });
    if (state->ended || state->answered) continue;
    // Ends the grab of this program's that a key began, and nothing when there is none.
    xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
    xcb_flush(connection);
  }
}

}  // namespace pellar
