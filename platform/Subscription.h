#pragma once

#include <functional>
#include <utility>

namespace pellar {

// A registration that can be ended. Dropping it is silence: once the destructor (or cancel) returns, the
// callback is never called again. A callback may drop its own subscription while it runs. Main thread only.
class [[nodiscard]] Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> onCancel) : cancel_(std::move(onCancel)) {}
  Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      cancel_ = std::exchange(other.cancel_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { cancel(); }

  // Ends the registration now. Ending twice is harmless.
  void cancel() {
    if (auto end = std::exchange(cancel_, nullptr)) end();
  }
  [[nodiscard]] bool active() const { return static_cast<bool>(cancel_); }

 private:
  std::function<void()> cancel_;
};

}  // namespace pellar
