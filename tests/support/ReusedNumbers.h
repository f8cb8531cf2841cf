#pragma once

#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include "platform/sim/faults/ForwardingAccessibility.h"

namespace pellar {

// A window under the same number as every other one.
class Renumbered final : public ElementHandle {
 public:
  explicit Renumbered(Element real) : real_(std::move(real)) {}
  [[nodiscard]] WindowId hash() const override { return 7; }
  [[nodiscard]] bool equals(const ElementHandle& other) const override {
    return real_ == dynamic_cast<const Renumbered&>(other).real_;
  }
  static const Element& real(const Element& element) {
    const auto* renumbered = dynamic_cast<const Renumbered*>(&element.handle());
    return renumbered != nullptr ? renumbered->real_ : element;
  }

 private:
  Element real_;
};

// Hands the real elements on to the observer.
class RenumberedObserver final : public ElementObserver {
 public:
  explicit RenumberedObserver(std::unique_ptr<ElementObserver> sound) : sound_(std::move(sound)) {}
  Registration add(const Element& element, std::string_view notification) override {
    return sound_->add(Renumbered::real(element), notification);
  }
  void remove(const Element& element, std::string_view notification) override {
    sound_->remove(Renumbered::real(element), notification);
  }

 private:
  std::unique_ptr<ElementObserver> sound_;
};

// A new window comes under the number of an old one, as happens where numbers are reused.
class ReusedNumbers final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override {
    auto value = ForwardingAccessibility::attribute(Renumbered::real(element), name);
    if (!value) return value;
    if (auto* list = std::get_if<std::vector<Element>>(&*value))
      for (auto& each : *list) each = Element(std::make_shared<Renumbered>(each));
    if (name == "AXFocusedWindow") return Element(std::make_shared<Renumbered>(std::get<Element>(*value)));
    return value;
  }
  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    ForwardingAccessibility::set(Renumbered::real(element), name, value);
  }
  Performed perform(const Element& element, std::string_view action) override {
    return ForwardingAccessibility::perform(Renumbered::real(element), action);
  }
  void willRead(std::span<const Element>, std::span<const std::string_view>) override {}
  [[nodiscard]] Subscription onceAtRest(const Element&, std::function<void()>) override { return {}; }
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override {
    return std::make_unique<RenumberedObserver>(
        ForwardingAccessibility::observe(pid, std::move(onNotification)));
  }
};

}  // namespace pellar
