#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <optional>

#include "platform/Accessibility.h"
#include "platform/mac/system/CFRef.h"

namespace pellar {

// An AXUIElement. Its hash and equality are the system's: equal for every reference to one object, and for a
// window the same as long as it exists, also once the application no longer answers for it.
class MacElement final : public ElementHandle {
 public:
  explicit MacElement(CFRef<AXUIElementRef> element) : element_(std::move(element)) {}

  [[nodiscard]] WindowId hash() const override { return static_cast<WindowId>(CFHash(element_.get())); }
  // A hash may be shared by two objects; this may not.
  [[nodiscard]] bool equals(const ElementHandle& other) const override {
    return CFEqual(element_.get(), static_cast<const MacElement&>(other).element_.get());
  }

  [[nodiscard]] static Element make(CFRef<AXUIElementRef> element);
  // Not owned.
  [[nodiscard]] static AXUIElementRef native(const Element& element);

 private:
  CFRef<AXUIElementRef> element_;
};

// Absent for a kind of value that no port speaks of, for an error in a value's place, and for a list that
// holds anything but elements.
[[nodiscard]] std::optional<AttributeValue> attributeValue(CFTypeRef value);

// Empty when the system makes no such value.
[[nodiscard]] CFRef<CFTypeRef> nativeValue(const AttributeValue& value);

}  // namespace pellar
