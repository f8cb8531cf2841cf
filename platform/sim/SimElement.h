#pragma once

#include <cstdint>
#include <utility>

#include "platform/Accessibility.h"
#include "platform/sim/SimDesktop.h"

namespace pellar {

// What a simulated element stands for. It says nothing of whether the object still exists.
class SimElement final : public ElementHandle {
 public:
  enum class Kind : std::uint8_t { application, window, closeButton };

  static Element ofApplication(ProcessId pid) { return make(Kind::application, pid, nullptr); }
  static Element ofWindow(const SimWindowPointer& window) { return make(Kind::window, window->pid, window); }
  static Element ofCloseButton(const SimWindowPointer& window) {
    return make(Kind::closeButton, window->pid, window);
  }

  SimElement(Kind kind, ProcessId pid, SimWindowPointer window)
      : kind_(kind), pid_(pid), window_(std::move(window)) {}

  [[nodiscard]] Kind kind() const { return kind_; }
  [[nodiscard]] ProcessId pid() const { return pid_; }
  [[nodiscard]] const SimWindowPointer& window() const { return window_; }

  [[nodiscard]] WindowId hash() const override {
    // Spread over all 64 bits, negative numbers too, as a real hash is; a bijection, so that no two collide.
    std::uint64_t mixed =
        (serial() << 34) ^ (static_cast<std::uint64_t>(pid_) << 2) ^ static_cast<std::uint64_t>(kind_);
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
    return static_cast<WindowId>(mixed ^ (mixed >> 31));
  }
  [[nodiscard]] bool equals(const ElementHandle& other) const override {
    const auto& element = dynamic_cast<const SimElement&>(other);
    return kind_ == element.kind_ && pid_ == element.pid_ && window_ == element.window_;
  }

 private:
  static Element make(Kind kind, ProcessId pid, SimWindowPointer window) {
    return Element(std::make_shared<SimElement>(kind, pid, std::move(window)));
  }
  [[nodiscard]] std::uint64_t serial() const { return window_ ? window_->serial : 0; }

  Kind kind_;
  ProcessId pid_;
  SimWindowPointer window_;
};

}  // namespace pellar
