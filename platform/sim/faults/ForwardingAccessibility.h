#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/Accessibility.h"

namespace pellar {

// Passes every call on. Override the calls that are to break.
class ForwardingAccessibility : public Accessibility {
 public:
  explicit ForwardingAccessibility(Accessibility& sound) : sound_(sound) {}

  [[nodiscard]] bool isTrusted() const override { return sound_.isTrusted(); }
  bool isTrustedPromptingUser() override { return sound_.isTrustedPromptingUser(); }
  [[nodiscard]] Element applicationElement(ProcessId pid) override { return sound_.applicationElement(pid); }
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override {
    return sound_.attribute(element, name);
  }
  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    sound_.set(element, name, value);
  }
  Performed perform(const Element& element, std::string_view action) override {
    return sound_.perform(element, action);
  }
  [[nodiscard]] std::uint64_t unansweredReads() const override { return sound_.unansweredReads(); }
  void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) override {
    sound_.willRead(elements, attributes);
  }
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override {
    return sound_.observe(pid, std::move(onNotification));
  }
  [[nodiscard]] Subscription onceAtRest(const Element& window, std::function<void()> callback) override {
    return sound_.onceAtRest(window, std::move(callback));
  }

 private:
  Accessibility& sound_;
};

}  // namespace pellar
