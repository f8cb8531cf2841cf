#pragma once

#include <cstdint>
#include <utility>

#include "platform/Accessibility.h"
#include "platform/sim/applications/SimDesktop.h"

namespace pellar {

// What a simulated element stands for. It says nothing of whether the object still exists.
class SimElement final : public ElementHandle {
 public:
  enum class Kind : std::uint8_t { application, window, closeButton, menu };

  static Element ofApplication(ProcessId pid) { return make(Kind::application, pid, nullptr); }
  static Element ofWindow(const SimWindowPointer& window) { return make(Kind::window, window->pid, window); }
  static Element ofCloseButton(const SimWindowPointer& window) {
    return make(Kind::closeButton, window->pid, window);
  }
  static Element ofMenu(const SimMenuPointer& menu) { return Element(std::make_shared<SimElement>(menu)); }

  SimElement(Kind kind, ProcessId pid, SimWindowPointer window)
      : kind_(kind), pid_(pid), window_(std::move(window)) {}
  explicit SimElement(const SimMenuPointer& menu) : kind_(Kind::menu), pid_(menu->pid), menu_(menu) {}

  [[nodiscard]] Kind kind() const { return kind_; }
  [[nodiscard]] ProcessId pid() const { return pid_; }
  [[nodiscard]] const SimWindowPointer& window() const { return window_; }  // null for others than windows
  [[nodiscard]] const SimMenuPointer& menu() const { return menu_; }        // null for others than menus

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
    return kind_ == element.kind_ && pid_ == element.pid_ && window_ == element.window_ &&
           menu_ == element.menu_;
  }

 private:
  static Element make(Kind kind, ProcessId pid, SimWindowPointer window) {
    return Element(std::make_shared<SimElement>(kind, pid, std::move(window)));
  }
  [[nodiscard]] std::uint64_t serial() const { return window_ ? window_->serial : menu_ ? menu_->serial : 0; }

  Kind kind_;
  ProcessId pid_;
  SimWindowPointer window_;
  SimMenuPointer menu_;
};

}  // namespace pellar
