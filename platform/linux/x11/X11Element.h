#pragma once

#include <cstdint>
#include <memory>

#include "platform/Accessibility.h"

namespace pellar {

// What an element stands for on X11.
class X11Element : public ElementHandle {
 public:
  enum class Kind { window, application, closeButton, menuPart };

  // `number` is the window's identifier, the application's process number, or what a menu's part makes of its
  // own identity.
  static Element make(Kind kind, std::uint32_t number) {
    return Element(std::make_shared<X11Element>(kind, number));
  }
  static const X11Element& of(const Element& element) {
    return static_cast<const X11Element&>(element.handle());
  }

  X11Element(Kind kind, std::uint32_t number) : kind_(kind), number_(number) {}

  [[nodiscard]] WindowId hash() const override {
    return (static_cast<WindowId>(kind_) << 32) | static_cast<WindowId>(number_);
  }
  [[nodiscard]] bool equals(const ElementHandle& other) const override { return hash() == other.hash(); }

  [[nodiscard]] Kind kind() const { return kind_; }
  [[nodiscard]] std::uint32_t number() const { return number_; }

 private:
  Kind kind_;
  std::uint32_t number_;
};

}  // namespace pellar
