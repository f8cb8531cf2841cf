#include "platform/mac/applications/AttributeValues.h"

#include <memory>
#include <utility>

#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

std::optional<AttributeValue> fromNumber(CFNumberRef number) {
  // Some applications give 0 and 1 for what is documented as a Boolean; bridging takes these two for one.
  double value = 0;
  if (!CFNumberGetValue(number, kCFNumberDoubleType, &value) || (value != 0 && value != 1))
    return std::nullopt;
  return value == 1;
}

std::optional<AttributeValue> fromAXValue(AXValueRef value) {
  switch (AXValueGetType(value)) {
    case kAXValueTypeCGPoint: {
      CGPoint point{};
      if (!AXValueGetValue(value, kAXValueTypeCGPoint, &point)) return std::nullopt;
      return AxPoint{point.x, point.y};
    }
    case kAXValueTypeCGSize: {
      CGSize size{};
      if (!AXValueGetValue(value, kAXValueTypeCGSize, &size)) return std::nullopt;
      return Size{size.width, size.height};
    }
    default:
      return std::nullopt;
  }
}

std::optional<AttributeValue> fromArray(CFArrayRef array) {
  std::vector<Element> elements;
  const CFIndex count = CFArrayGetCount(array);
  elements.reserve(static_cast<std::size_t>(count));
  for (CFIndex index = 0; index < count; ++index) {
    const CFTypeRef item = CFArrayGetValueAtIndex(array, index);
    if (item == nullptr || CFGetTypeID(item) != AXUIElementGetTypeID()) return std::nullopt;
    elements.push_back(MacElement::make(CFRef<AXUIElementRef>::retain(static_cast<AXUIElementRef>(item))));
  }
  return elements;
}

CFRef<CFTypeRef> adopted(CFTypeRef value) {
  return CFRef<CFTypeRef>::adopt(value);
}

struct ToNative {
  CFRef<CFTypeRef> operator()(bool value) const {
    return CFRef<CFTypeRef>::retain(value ? kCFBooleanTrue : kCFBooleanFalse);
  }
  CFRef<CFTypeRef> operator()(const std::string& value) const {
    return CFRef<CFTypeRef>::retain((__bridge CFTypeRef)toNSString(value));
  }
  CFRef<CFTypeRef> operator()(const AxPoint& value) const {
    const CGPoint point = CGPointMake(value.x, value.y);
    return adopted(AXValueCreate(kAXValueTypeCGPoint, &point));
  }
  CFRef<CFTypeRef> operator()(const Size& value) const {
    const CGSize size = CGSizeMake(value.width, value.height);
    return adopted(AXValueCreate(kAXValueTypeCGSize, &size));
  }
  CFRef<CFTypeRef> operator()(const Element& value) const {
    return CFRef<CFTypeRef>::retain(MacElement::native(value));
  }
  CFRef<CFTypeRef> operator()(const std::vector<Element>& value) const {
    const auto array = CFRef<CFMutableArrayRef>::adopt(CFArrayCreateMutable(
        kCFAllocatorDefault, static_cast<CFIndex>(value.size()), &kCFTypeArrayCallBacks));
    for (const auto& element : value) CFArrayAppendValue(array.get(), MacElement::native(element));
    return CFRef<CFTypeRef>::retain(array.get());
  }
};

}  // namespace

Element MacElement::make(CFRef<AXUIElementRef> element) {
  return Element(std::make_shared<const MacElement>(std::move(element)));
}

AXUIElementRef MacElement::native(const Element& element) {
  return static_cast<const MacElement&>(element.handle()).element_.get();
}

std::optional<AttributeValue> attributeValue(CFTypeRef value) {
  if (value == nullptr) return std::nullopt;
  const CFTypeID type = CFGetTypeID(value);
  if (type == CFBooleanGetTypeID())
    return static_cast<bool>(CFBooleanGetValue(static_cast<CFBooleanRef>(value)));
  if (type == CFStringGetTypeID()) return fromNSString((__bridge NSString*)value);
  if (type == AXUIElementGetTypeID()) {
    return MacElement::make(CFRef<AXUIElementRef>::retain(static_cast<AXUIElementRef>(value)));
  }
  if (type == AXValueGetTypeID()) return fromAXValue(static_cast<AXValueRef>(value));
  if (type == CFArrayGetTypeID()) return fromArray(static_cast<CFArrayRef>(value));
  if (type == CFNumberGetTypeID()) return fromNumber(static_cast<CFNumberRef>(value));
  return std::nullopt;
}

CFRef<CFTypeRef> nativeValue(const AttributeValue& value) {
  return std::visit(ToNative{}, value);
}

}  // namespace pellar
