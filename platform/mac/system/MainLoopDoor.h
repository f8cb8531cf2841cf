#pragma once

#include <memory>
#include <mutex>
#include <utility>

#include "platform/MainLoop.h"

namespace pellar {

// Lets what comes from the system's own threads post to the main loop, for as long as the door's owner lives.
class MainLoopDoor {
 public:
  explicit MainLoopDoor(MainLoop& loop) : state_(std::make_shared<State>(&loop)) {}
  ~MainLoopDoor() {
    const std::lock_guard lock(state_->mutex);
    state_->loop = nullptr;
  }
  MainLoopDoor(const MainLoopDoor&) = delete;
  MainLoopDoor& operator=(const MainLoopDoor&) = delete;

  // A key to the door, for any thread. With the door gone it does nothing.
  class Key {
   public:
    void post(MainLoop::Callback block) const {
      const std::lock_guard lock(state_->mutex);
      if (state_->loop != nullptr) state_->loop->post(std::move(block));
    }

   private:
    friend class MainLoopDoor;
    struct State {
      explicit State(MainLoop* open) : loop(open) {}
      std::mutex mutex;
      MainLoop* loop;  // guarded by mutex
    };
    explicit Key(std::shared_ptr<State> state) : state_(std::move(state)) {}
    std::shared_ptr<State> state_;
  };
  [[nodiscard]] Key key() const { return Key(state_); }

 private:
  using State = Key::State;
  std::shared_ptr<State> state_;
};

}  // namespace pellar
