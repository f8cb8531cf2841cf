#include "app/strip/place/Screens.h"

#include <algorithm>

namespace pellar::Screens {
namespace {

double commonArea(const Screen& screen, const ScreenRect& rect) {
  const auto common = screen.frame.intersection(rect);
  return common ? common->area() : 0;
}

}  // namespace

std::optional<Screen> containing(const ScreenRect& rect, const ScreenList& screens) {
  const auto all = screens.screens();
  if (all.empty()) return std::nullopt;
  const auto best = std::ranges::max_element(
      all, {}, [&](const Screen& screen) { return commonArea(screen, rect); });  // the first of equals
  if (best->frame.intersects(rect)) return *best;

  const ScreenPoint centre{rect.midX(), rect.midY()};
  const auto around =
      std::ranges::find_if(all, [&](const Screen& screen) { return screen.frame.contains(centre); });
  if (around != all.end()) return *around;
  const auto main = screens.mainScreen();
  return main ? *main : all.front();
}

}  // namespace pellar::Screens
