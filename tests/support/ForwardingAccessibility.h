#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/Accessibility.h"

namespace pellar {

// Passes every call on. Tests override the calls they break.
class ForwardingAccessibility : public Accessibility {
 public:
  explicit ForwardingAccessibility(Accessibility& real) : real_(real) {}

  [[nodiscard]] bool isTrusted() const override { return real_.isTrusted(); }
  bool isTrustedPromptingUser() override { return real_.isTrustedPromptingUser(); }
  [[nodiscard]] Element applicationElement(ProcessId pid) override { return real_.applicationElement(pid); }
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override {
    return real_.attribute(element, name);
  }
  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    real_.set(element, name, value);
  }
  bool perform(const Element& element, std::string_view action) override {
    return real_.perform(element, action);
  }
  void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) override {
    real_.willRead(elements, attributes);
  }
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override {
    return real_.observe(pid, std::move(onNotification));
  }

 private:
  Accessibility& real_;
};

}  // namespace pellar
