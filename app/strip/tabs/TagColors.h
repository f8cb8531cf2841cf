#pragma once

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

}  // namespace pellar
