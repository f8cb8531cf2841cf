#pragma once

#include <string_view>

#include "core/AppState.h"
#include "platform/Canvas.h"

namespace pellar {

// The colour a tag is shown in: the system's of the same name.
[[nodiscard]] constexpr Color shownColor(TagColor tag) {
  switch (tag) {
    case TagColor::red:
      return Color::of(SystemColor::red);
    case TagColor::orange:
      return Color::of(SystemColor::orange);
    case TagColor::yellow:
      return Color::of(SystemColor::yellow);
    case TagColor::green:
      return Color::of(SystemColor::green);
    case TagColor::blue:
      return Color::of(SystemColor::blue);
    case TagColor::purple:
      return Color::of(SystemColor::purple);
  }
  return {};
}

// The colour's name in menus.
[[nodiscard]] constexpr std::string_view shownName(TagColor tag) {
  switch (tag) {
    case TagColor::red:
      return "Red";
    case TagColor::orange:
      return "Orange";
    case TagColor::yellow:
      return "Yellow";
    case TagColor::green:
      return "Green";
    case TagColor::blue:
      return "Blue";
    case TagColor::purple:
      return "Purple";
  }
  return {};
}

}  // namespace pellar
