#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "tests/simulation/RandomDesktop.h"

namespace pellar {

// A user who puts windows in their places with the strip: zooms them, tiles them, drags them along.
class RandomArranger : public RandomDesktop {
 public:
  using RandomDesktop::RandomDesktop;

 protected:
  [[nodiscard]] StripReader strip() { return mac().strip(); }
  // A tab that can be taken hold of; absent when there is none.
  [[nodiscard]] std::optional<std::size_t> anyTab();

  // Any one such thing.
  void arrange();
  // Once more what was zoomed just now, if the user wants that; whether it was done.
  bool zoomBack();

  // What the user is about to do with the menu that opens next.
  std::function<void(SimOpenMenu&)> menuPlan_;

 private:
  // Whether the pointer reaches the strip there.
  [[nodiscard]] bool reaches(ScreenPoint point);
  // The part of the strip that holds nothing; absent where it cannot be reached, or told from a tab.
  [[nodiscard]] std::optional<ScreenPoint> emptyPart();
  // The tool that zooms; absent where it cannot be reached.
  [[nodiscard]] std::optional<ScreenPoint> toolPart();
  void zoom();
  void tile();
  void pickTile();
  void dragGroup();

  bool zoomsBack_ = false;
};

}  // namespace pellar
