#pragma once

#include <functional>
#include <utility>

#include "platform/EventMonitors.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

// The monitors of the simulated pointer's buttons.
class SimEventMonitors final : public EventMonitors {
 public:
  [[nodiscard]] Subscription onGlobalMouseDown(std::function<void()> callback) override {
    return global_.add(std::move(callback));
  }
  [[nodiscard]] Subscription onLocalMouseDown(std::function<void(const ObservedClick&)> callback) override {
    return local_.add(std::move(callback));
  }
  [[nodiscard]] Subscription onceButtonsAreUp(std::function<void()> callback) override {
    return held_ ? released_.add(std::move(callback)) : Subscription();
  }

  [[nodiscard]] bool watched() const { return !global_.empty() || !local_.empty() || !released_.empty(); }

  // For SimPointer.
  void pressedElsewhere() const { global_.call(); }
  void pressedHere(const ObservedClick& click) const { local_.call(click); }
  void buttonHeld() { held_ = true; }
  void buttonsReleased() {
    held_ = false;
    released_.call();
  }

 private:
  CallbackList<> global_;
  CallbackList<ObservedClick> local_;
  CallbackList<> released_;
  bool held_ = false;
};

}  // namespace pellar
