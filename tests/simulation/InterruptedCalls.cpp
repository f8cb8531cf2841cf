#include "tests/simulation/InterruptedCalls.h"

#include <string>
#include <utility>
#include <variant>

#include "platform/sim/applications/SimElement.h"

namespace pellar {

std::optional<AttributeValue> InterruptedCalls::attribute(const Element& element, std::string_view name) {
  auto value = ForwardingAccessibility::attribute(element, name);
  if (!value || !lies || !lies(dynamic_cast<const SimElement&>(element.handle()).pid())) return value;
  switch (++told_ % 3) {
    case 0:
      return std::nullopt;
    case 1:
      return AttributeValue{Size{-1, 0}};
    default:
      return std::holds_alternative<bool>(*value) ? AttributeValue{std::string("no")} : AttributeValue{true};
  }
}

void InterruptedCalls::set(const Element& element, std::string_view name, const AttributeValue& value) {
  interrupt();
  ForwardingAccessibility::set(element, name, value);
  interrupt();
}

Performed InterruptedCalls::perform(const Element& element, std::string_view action) {
  interrupt();
  const Performed performed = ForwardingAccessibility::perform(element, action);
  interrupt();
  return performed;
}

void InterruptedCalls::interrupt() {
  if (std::exchange(inside_, true)) return;
  if (happening) happening();
  inside_ = false;
}

}  // namespace pellar
