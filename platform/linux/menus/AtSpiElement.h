#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/menus/AtSpiTree.h"
#include "platform/linux/x11/X11Element.h"

namespace pellar {

// A part of another program's menus.
class AtSpiElement final : public X11Element {
 public:
  // `systemMenu` stands for the menu that other systems have before the program's own; nothing is in it.
  enum class Part { menuBar, systemMenu, barItem, menu, item };

  // What was read on the way from the menu bar, and until when that way may take.
  struct Facts {
    Part part;
    AtSpiObject object;
    std::optional<std::string> name;
    AtSpiBus::Deadline deadline;
    ProcessId process;
  };

  static Element make(Facts facts) { return Element(std::make_shared<AtSpiElement>(std::move(facts))); }
  // Null for an element that is no part of a menu.
  static const AtSpiElement* of(const Element& element) {
    return dynamic_cast<const AtSpiElement*>(&element.handle());
  }

  explicit AtSpiElement(Facts facts)
      : X11Element(Kind::menuPart, numberOf(facts)), facts_(std::move(facts)) {}

  [[nodiscard]] bool equals(const ElementHandle& other) const override {
    const auto* same = dynamic_cast<const AtSpiElement*>(&other);
    return same != nullptr && same->facts_.part == facts_.part &&
           same->facts_.object.reference == facts_.object.reference;
  }
  [[nodiscard]] const Facts& facts() const { return facts_; }

 private:
  static std::uint32_t numberOf(const Facts& facts) {
    const auto text = facts.object.reference.bus.toStdString() + facts.object.reference.path.toStdString() +
                      std::to_string(static_cast<int>(facts.part));
    return static_cast<std::uint32_t>(std::hash<std::string>()(text));
  }

  Facts facts_;
};

}  // namespace pellar
