#include "platform/mac/applications/MacAccessibility.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/mac/applications/AttributeValues.h"
#include "platform/mac/applications/MacElementObserver.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {

bool MacAccessibility::isTrusted() const {
  return AXIsProcessTrusted();
}

bool MacAccessibility::isTrustedPromptingUser() {
  NSDictionary* options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
  return AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

Element MacAccessibility::applicationElement(ProcessId pid) {
  return MacElement::make(CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(pid)));
}

std::optional<AttributeValue> MacAccessibility::attribute(const Element& element, std::string_view name) {
  if (auto fetched = prefetched_.take(element, name)) return std::move(*fetched);
  CFTypeRef copied = nullptr;
  const AXError error = AXUIElementCopyAttributeValue(MacElement::native(element),
                                                      (__bridge CFStringRef)toNSString(name), &copied);
  if (error == kAXErrorCannotComplete) ++unanswered_;
  const auto value = CFRef<CFTypeRef>::adopt(copied);
  return error == kAXErrorSuccess ? attributeValue(value.get()) : std::nullopt;
}

void MacAccessibility::set(const Element& element, std::string_view name, const AttributeValue& value) {
  prefetched_.clear();
  const auto native = nativeValue(value);
  if (!native) return;
  AXUIElementSetAttributeValue(MacElement::native(element), (__bridge CFStringRef)toNSString(name),
                               native.get());
}

Performed MacAccessibility::perform(const Element& element, std::string_view action) {
  prefetched_.clear();
  const AXError error =
      AXUIElementPerformAction(MacElement::native(element), (__bridge CFStringRef)toNSString(action));
  switch (error) {
    case kAXErrorSuccess:
      return Performed::done;
    case kAXErrorCannotComplete:
      return Performed::unanswered;
    default:
      return Performed::refused;
  }
}

void MacAccessibility::willRead(std::span<const Element> elements,
                                std::span<const std::string_view> attributes) {
  prefetched_.fetch(elements, attributes);
  // What was not read in this turn of the loop is old.
  expiry_ = loop_.after(std::chrono::milliseconds(0), [this] { prefetched_.clear(); });
}

std::unique_ptr<ElementObserver> MacAccessibility::observe(ProcessId pid,
                                                           std::function<void()> onNotification) {
  return MacElementObserver::make(pid, std::move(onNotification));
}

}  // namespace pellar
