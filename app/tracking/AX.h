#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/Accessibility.h"

// What is read of other programs' windows and done to them, in the platform's words. Main thread only.
namespace pellar::AX {

// The value of an attribute when it has one and it is of type T; absent in every other case.
template <class T>
[[nodiscard]] std::optional<T> value(Accessibility& accessibility, const Element& element,
                                     std::string_view attribute) {
  auto read = accessibility.attribute(element, attribute);
  if (!read) return std::nullopt;
  if (T* typed = std::get_if<T>(&*read)) return std::move(*typed);
  return std::nullopt;
}

// Position and size in Accessibility coordinates; absent when either cannot be read or is not finite.
[[nodiscard]] std::optional<AxRect> frame(Accessibility& accessibility, const Element& element);

// Asks a window to take a frame. Whether it did is seen by reading it.
void writeFrame(Accessibility& accessibility, const Element& window, const AxRect& frame);

// Presses a window's close button; false when it has none. The application may still ask about unsaved
// changes.
bool pressCloseButton(Accessibility& accessibility, const Element& window);

}  // namespace pellar::AX
