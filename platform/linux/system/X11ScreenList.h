#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/MainLoop.h"
#include "platform/ScreenList.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

// The monitors, and what panels leave of each. Asks the server only after something changed.
class X11ScreenList final : public ScreenList {
 public:
  X11ScreenList(const X11Connection& connection, const X11Density& density, X11Mirror& mirror, MainLoop& loop)
      : connection_(connection), density_(density), mirror_(mirror), loop_(loop) {}

  [[nodiscard]] std::vector<Screen> screens() const override;
  // That of the active window.
  [[nodiscard]] std::optional<Screen> mainScreen() const override;
  [[nodiscard]] Subscription onChanged(std::function<void()> callback) override {
    return changed_.add(std::move(callback));
  }
  // A screen in pixels.
  struct Monitor {
    RootRect pixels;
    RootRect visible;
    double scale = 1;  // pixels of a point
  };
  // Valid until the screens change.
  [[nodiscard]] const std::vector<Monitor>& monitors() const {
    update();
    return monitors_;
  }

  // This program keeps that many pixels free from the top of all screens together, which are part of the
  // visible frames nevertheless.
  void noteOwnReserve(int depth) { ownReserves_.insert(depth); }
  // The mirror has taken in that something changed.
  void noteChange() { changed_.post(loop_); }

 private:
  void update() const;
  [[nodiscard]] RootRect visible(const RootRect& monitor) const;

  const X11Connection& connection_;
  const X11Density& density_;
  X11Mirror& mirror_;
  MainLoop& loop_;
  CallbackList<> changed_;
  // All there ever were: the window manager's work area lags behind.
  std::set<double> ownReserves_;
  mutable std::optional<std::uint64_t> readVersion_;
  mutable std::vector<Monitor> monitors_;
  mutable std::vector<Screen> screens_;
};

}  // namespace pellar
