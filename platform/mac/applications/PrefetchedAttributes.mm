#include "platform/mac/applications/PrefetchedAttributes.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/mac/applications/AttributeValues.h"
#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

// Far less than the messaging time-out, and far more than a refusal takes.
constexpr std::chrono::milliseconds shortestSilence{500};

}  // namespace

void PrefetchedAttributes::fetch(std::span<const Element> elements,
                                 std::span<const std::string_view> attributes) {
  clear();
  NSMutableArray<NSString*>* names = [NSMutableArray arrayWithCapacity:attributes.size()];
  for (const std::string_view name : attributes) [names addObject:toNSString(name)];

  pid_t silent = 0;  // the process that let the messaging time-out pass
  for (const auto& element : elements) {
    const AXUIElementRef native = MacElement::native(element);
    pid_t pid = 0;
    AXUIElementGetPid(native, &pid);
    AXError error = kAXErrorCannotComplete;
    CFArrayRef copied = nullptr;
    // Not asked again for its next window, which would multiply the wait.
    bool isSilent = pid != 0 && pid == silent;
    if (!isSilent) {
      const auto asked = std::chrono::steady_clock::now();
      error = AXUIElementCopyMultipleAttributeValues(native, (__bridge CFArrayRef)names,
                                                     AXCopyMultipleAttributeOptions{}, &copied);
      // The same error comes at once when messaging failed in some other way (AXError.h), which says nothing
      // of the application's next window.
      isSilent =
          error == kAXErrorCannotComplete && std::chrono::steady_clock::now() - asked >= shortestSilence;
      if (isSilent) silent = pid;
    }
    if (error == kAXErrorCannotComplete) ++unanswered_;
    const auto values = CFRef<CFArrayRef>::adopt(copied);
    // Neither an object that is gone nor a silent application answers a single read any better.
    const bool hopeless = isSilent || error == kAXErrorInvalidUIElement;
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
