#pragma once

#include <algorithm>
#include <cstdint>
#include <list>
#include <memory>
#include <utility>

#include "platform/EventTap.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The taps of the session, which the program's main thread serves. The newest sees a key first, as at the
// head of the system's list.
class SimEventTaps final : public EventTaps {
 public:
  explicit SimEventTaps(SimMainLoop& loop) : loop_(loop) {}

  // The system refuses further taps.
  bool refused = false;

  [[nodiscard]] std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& /*wanted*/,
                                                      Handler handler) override {
    if (refused) return nullptr;
    auto state = std::make_shared<State>(State{std::move(handler)});
    states_->push_front(state);
    return std::make_unique<Tap>(loop_, states_, std::move(state));
  }

  // Whether a tap swallowed the key; otherwise the application in front receives it.
  bool keyDown(std::uint16_t keyCode, std::uint64_t flags) {
    const auto states = *states_;
    for (const auto& state : states) {
      const auto handler = state->enabled ? state->handler : nullptr;
      if (handler && handler({TapEvent::Type::keyDown, keyCode, flags})) return true;
    }
    return false;
  }

  // The system switches every tap off and tells it so.
  void disable(TapEvent::Type notice) {
    const auto states = *states_;
    for (const auto& state : states) {
      state->enabled = false;
      if (const auto handler = state->handler) static_cast<void>(handler({notice, 0, 0}));
    }
  }

  [[nodiscard]] std::size_t count() const { return states_->size(); }
  // Whether a key pressed now waits until the main thread has looked at it.
  [[nodiscard]] bool holdKeys() const {
    return std::ranges::any_of(*states_, [](const auto& state) { return state->enabled; });
  }

 private:
  struct State {
    Handler handler;
    bool enabled = true;
  };
  using States = std::list<std::shared_ptr<State>>;

  class Tap final : public EventTap {
   public:
    Tap(SimMainLoop& loop, std::shared_ptr<States> states, std::shared_ptr<State> state)
        : loop_(loop), states_(std::move(states)), state_(std::move(state)) {}
    ~Tap() override {
      states_->remove(state_);
      state_->handler = nullptr;
    }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;
    // A tap that its own program turns off may be told of it as of a user's doing
    // (github.com/Hammerspoon/hammerspoon/issues/362).
    void setListening(bool listens) override {
      if (std::exchange(state_->enabled, listens) && !listens)
        loop_.post([state = state_] {
          if (const auto handler = state->handler)
            static_cast<void>(handler({TapEvent::Type::disabledByUserInput, 0, 0}));
        });
    }

   private:
    SimMainLoop& loop_;
    std::shared_ptr<States> states_;
    std::shared_ptr<State> state_;
  };

  SimMainLoop& loop_;
  std::shared_ptr<States> states_ = std::make_shared<States>();
};

}  // namespace pellar
