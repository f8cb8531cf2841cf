#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "platform/sim/faults/ForwardingAccessibility.h"

namespace pellar {

// Lets something happen inside writes and actions, as calls to other processes do that run a nested loop, and
// lets applications answer a read with what it is not.
class InterruptedCalls final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  std::function<void()> happening;
  // Whether the application with this number gives nothing, or a value of another type, this once.
  std::function<bool(ProcessId)> lies;

  [[nodiscard]] std::optional<AttributeValue> attribute(const Element& element,
                                                        std::string_view name) override;
  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;

 private:
  void interrupt();

  bool inside_ = false;
  unsigned told_ = 0;  // lies so far
};

}  // namespace pellar
