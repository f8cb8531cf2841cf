#include "platform/sim/faults/FaultyAccessibility.h"

namespace pellar {

void FaultyAccessibility::answer(std::string_view attribute, AttributeValue value) {
  answers_.insert_or_assign(std::string(attribute), std::move(value));
}

void FaultyAccessibility::repair() {
  refused_.clear();
  refusedOf_.clear();
  answers_.clear();
  beforeRead_ = nullptr;
  writesIgnored_ = actionsIgnored_ = observersRefused_ = false;
}

std::optional<AttributeValue> FaultyAccessibility::attribute(const Element& element, std::string_view name) {
  if (beforeRead_) beforeRead_(element, name);
  if (refused_.contains(name) || refusedOf_.contains({element.hash(), std::string(name)}))
    return std::nullopt;
  if (const auto found = answers_.find(name); found != answers_.end()) return found->second;
  return ForwardingAccessibility::attribute(element, name);
}

void FaultyAccessibility::set(const Element& element, std::string_view name, const AttributeValue& value) {
  if (!writesIgnored_) ForwardingAccessibility::set(element, name, value);
}

Performed FaultyAccessibility::perform(const Element& element, std::string_view action) {
  return actionsIgnored_ ? Performed::refused : ForwardingAccessibility::perform(element, action);
}

std::unique_ptr<ElementObserver> FaultyAccessibility::observe(ProcessId pid,
                                                              std::function<void()> onNotification) {
  if (!observersRefused_) return ForwardingAccessibility::observe(pid, std::move(onNotification));
  ++refusedObservers_;
  return nullptr;
}

}  // namespace pellar
