#include "platform/mac/PrefetchedAttributes.h"

#include <algorithm>
#include <utility>

#include "platform/mac/AttributeValues.h"
#include "platform/mac/Conversions.h"

namespace pellar {

void PrefetchedAttributes::fetch(std::span<const Element> elements,
                                 std::span<const std::string_view> attributes) {
  clear();
  NSMutableArray<NSString*>* names = [NSMutableArray arrayWithCapacity:attributes.size()];
  for (const std::string_view name : attributes) [names addObject:toNSString(name)];

  for (const auto& element : elements) {
    CFArrayRef copied = nullptr;
    const AXError error = AXUIElementCopyMultipleAttributeValues(
        MacElement::native(element), (__bridge CFArrayRef)names, AXCopyMultipleAttributeOptions{}, &copied);
    const auto values = CFRef<CFArrayRef>::adopt(copied);
    // An object that is gone, or an application that let the messaging time-out pass, answers a single read
    // no better; asking again for each attribute would only multiply the wait.
    const bool hopeless = error == kAXErrorInvalidUIElement || error == kAXErrorCannotComplete;
    const bool complete = error == kAXErrorSuccess && values &&
                          CFArrayGetCount(values.get()) == static_cast<CFIndex>(attributes.size());
    if (!hopeless && !complete) continue;
    auto& entries = entries_[element.hash()];
    for (std::size_t index = 0; index < attributes.size(); ++index) {
      // An attribute that failed has an error (an AXValue) in its place.
      auto value = complete
                       ? attributeValue(CFArrayGetValueAtIndex(values.get(), static_cast<CFIndex>(index)))
                       : std::nullopt;
      entries.push_back({element, std::string(attributes[index]), std::move(value)});
    }
  }
}

std::optional<std::optional<AttributeValue>> PrefetchedAttributes::take(const Element& element,
                                                                        std::string_view name) {
  if (entries_.empty()) return std::nullopt;
  const auto found = entries_.find(element.hash());
  if (found == entries_.end()) return std::nullopt;
  auto& entries = found->second;
  const auto entry = std::find_if(entries.begin(), entries.end(), [&](const Entry& each) {
    return each.name == name && each.element == element;
  });
  if (entry == entries.end()) return std::nullopt;
  std::optional<std::optional<AttributeValue>> answer(std::in_place, std::move(entry->value));
  entries.erase(entry);
  return answer;
}

}  // namespace pellar
