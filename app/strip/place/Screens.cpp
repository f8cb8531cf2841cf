#include "app/strip/place/Screens.h"

#include <algorithm>

namespace pellar::Screens {

std::optional<Screen> containing(const ScreenRect& rect, const ScreenList& screens) {
  const auto all = screens.screens();
  if (all.empty()) return std::nullopt;
  if (const Screen* const most = screenHoldingMost(rect, all)) return *most;

  const ScreenPoint centre{rect.midX(), rect.midY()};
  const auto around =
      std::ranges::find_if(all, [&](const Screen& screen) { return screen.frame.contains(centre); });
  if (around != all.end()) return *around;
  const auto main = screens.mainScreen();
  return main ? *main : all.front();
}

}  // namespace pellar::Screens
