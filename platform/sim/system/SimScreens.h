#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/ScreenList.h"
#include "platform/shared/system/CallbackList.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The displays a test says there are. At first one of 1440 x 900 with a menu bar of 25 points.
class SimScreens final : public ScreenList {
 public:
  static constexpr double menuBarHeight = 25;

  explicit SimScreens(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] std::vector<Screen> screens() const override { return screens_; }
  [[nodiscard]] std::optional<Screen> mainScreen() const override {
    if (screens_.empty()) return std::nullopt;
    const auto window = keyWindowFrame ? keyWindowFrame() : std::nullopt;
    const Screen* const most = window ? screenHoldingMost(*window, screens_) : nullptr;
    return most != nullptr ? *most : screens_.front();
  }

  [[nodiscard]] Subscription onChanged(std::function<void()> callback) override {
    return changed_.add(std::move(callback));
  }

  // The window that has the keyboard.
  std::function<std::optional<ScreenRect>()> keyWindowFrame;

  void set(std::vector<Screen> screens) {
    screens_ = std::move(screens);
    changed_.post(loop_);
  }
  // Adds a display, given in screen coordinates, whose menu bar and dock take from its top and bottom.
  void add(const ScreenRect& frame, double top = menuBarHeight, double bottom = 0) {
    screens_.push_back(screen(frame, top, bottom));
    changed_.post(loop_);
  }
  static Screen screen(const ScreenRect& frame, double top, double bottom) {
    return {frame, {frame.x, frame.y + bottom, frame.width, frame.height - top - bottom}};
  }

  // Where the system lets a window of that frame go: its top not above the visible part of the screen that it
  // is on, nor so far out that no part of it can be taken hold of.
  [[nodiscard]] AxPoint clamped(const AxRect& wanted) const {
    constexpr double hold = 40;
    if (screens_.empty()) return wanted.origin();
    const Screen* const most = screenHoldingMost(toScreen(wanted), screens_);
    const AxRect area = toAccessibility((most != nullptr ? *most : screens_.front()).visibleFrame);
    return {std::clamp(wanted.x, area.minX() - std::max(0.0, wanted.width - hold), area.maxX() - hold),
            std::clamp(wanted.y, area.minY(), area.maxY() - hold)};
  }

  [[nodiscard]] AxPoint toAccessibility(ScreenPoint point) const { return {point.x, flipHeight() - point.y}; }
  [[nodiscard]] AxRect toAccessibility(const ScreenRect& rect) const {
    return {rect.x, flipHeight() - rect.maxY(), rect.width, rect.height};
  }
  [[nodiscard]] ScreenPoint toScreen(AxPoint point) const { return {point.x, flipHeight() - point.y}; }
  [[nodiscard]] ScreenRect toScreen(const AxRect& rect) const {
    return {rect.x, flipHeight() - rect.maxY(), rect.width, rect.height};
  }

 private:
  // Height of the first display's frame, where the two coordinate spaces meet; 0 when there is none.
  [[nodiscard]] double flipHeight() const { return screens_.empty() ? 0 : screens_.front().frame.height; }

  SimMainLoop& loop_;
  CallbackList<> changed_;
  std::vector<Screen> screens_{screen({0, 0, 1440, 900}, menuBarHeight, 0)};
};

}  // namespace pellar
