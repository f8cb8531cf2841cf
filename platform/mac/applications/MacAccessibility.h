#pragma once

#include "platform/Accessibility.h"
#include "platform/MainLoop.h"
#include "platform/mac/applications/PrefetchedAttributes.h"

namespace pellar {

// The Accessibility interface of ApplicationServices. A call blocks until the application answers or the
// system's own messaging time-out passes; none is set here.
class MacAccessibility final : public Accessibility {
 public:
  explicit MacAccessibility(MainLoop& loop) : loop_(loop) {}

  [[nodiscard]] bool isTrusted() const override;
  bool isTrustedPromptingUser() override;
  [[nodiscard]] Element applicationElement(ProcessId pid) override;
  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override;
  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;
  [[nodiscard]] std::uint64_t unansweredReads() const override {
    return unanswered_ + prefetched_.unanswered();
  }
  void willRead(std::span<const Element> elements, std::span<const std::string_view> attributes) override;
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override;
  // The system does not tell.
  [[nodiscard]] Subscription onceAtRest(const Element& /*window*/,
                                        std::function<void()> /*callback*/) override {
    return {};
  }

 private:
  MainLoop& loop_;
  std::uint64_t unanswered_ = 0;
  PrefetchedAttributes prefetched_;
  Subscription expiry_;  // depends-on: prefetched_
};

}  // namespace pellar
