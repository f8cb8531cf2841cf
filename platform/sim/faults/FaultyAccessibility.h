#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "platform/sim/faults/ForwardingAccessibility.h"

namespace pellar {

// Forwards to another Accessibility and breaks what it is told to. Works over any adapter.
class FaultyAccessibility final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  // From now on reads of the attribute are absent, of one element or of all.
  void refuse(std::string_view attribute) { refused_.emplace(attribute); }
  void refuse(const Element& element, std::string_view attribute) {
    refusedOf_.emplace(element.hash(), attribute);
  }
  // Reads of the attribute give this instead.
  void answer(std::string_view attribute, AttributeValue value);
  // Writes and actions reach no application.
  void ignoreWrites(bool ignored) { writesIgnored_ = ignored; }
  void ignoreActions(bool ignored) { actionsIgnored_ = ignored; }
  void refuseObservers(bool refused) { observersRefused_ = refused; }
  void repair();
  // Runs before each read: what the world does in the middle of the program's work.
  void beforeRead(std::function<void(const Element&, std::string_view attribute)> happening) {
    beforeRead_ = std::move(happening);
  }
  [[nodiscard]] int refusedObservers() const { return refusedObservers_; }

  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override;
  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;
  [[nodiscard]] std::unique_ptr<ElementObserver> observe(ProcessId pid,
                                                         std::function<void()> onNotification) override;

 private:
  std::set<std::string, std::less<>> refused_;
  std::set<std::pair<WindowId, std::string>> refusedOf_;
  std::map<std::string, AttributeValue, std::less<>> answers_;
  std::function<void(const Element&, std::string_view)> beforeRead_;
  bool writesIgnored_ = false;
  bool actionsIgnored_ = false;
  bool observersRefused_ = false;
  int refusedObservers_ = 0;
};

}  // namespace pellar
