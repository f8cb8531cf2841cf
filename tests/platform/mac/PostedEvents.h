#pragma once

#include <ApplicationServices/ApplicationServices.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

#include "core/Geometry.h"
#include "platform/mac/system/CFRef.h"

namespace pellar::contract {

// The user's mouse and keyboard: events that enter the system where those of the hardware do. Takes the
// Accessibility permission; without it they are dropped in silence. What they do happens while the receivers'
// loops run.
class PostedEvents {
 public:
  PostedEvents();
  // Lets go of what is held.
  ~PostedEvents();
  PostedEvents(const PostedEvents&) = delete;
  PostedEvents& operator=(const PostedEvents&) = delete;

  // With the left button held: drags.
  void movePointer(ScreenPoint point);
  void pressLeft(ScreenPoint point);
  void releaseLeft();
  void clickRight(ScreenPoint point);
  void clickMiddle(ScreenPoint point);
  // Downward when positive.
  void turnWheel(ScreenPoint point, int lines);

  void pressKey(std::uint16_t keyCode, CGEventFlags flags = 0);
  // ASCII, on any keyboard layout.
  void type(std::string_view text);

 private:
  void postMouse(CGEventType type, CGMouseButton button, int clickCount);

  CFRef<CGEventSourceRef> source_;
  CGPoint pointer_{};  // y downward
  bool leftHeld_ = false;
  int clickCount_ = 0;
  std::optional<CGPoint> lastPress_;
  std::chrono::steady_clock::time_point lastPressAt_;
};

}  // namespace pellar::contract
