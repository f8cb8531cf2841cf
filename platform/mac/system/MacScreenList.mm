#include "platform/mac/system/MacScreenList.h"

#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

Screen screenOf(NSScreen* screen) {
  return {.frame = fromNSRect<ScreenSpace>(screen.frame),
          .visibleFrame = fromNSRect<ScreenSpace>(screen.visibleFrame)};
}

}  // namespace

std::vector<Screen> MacScreenList::screens() const {
  std::vector<Screen> screens;
  for (NSScreen* screen in NSScreen.screens) screens.push_back(screenOf(screen));
  return screens;
}

std::optional<Screen> MacScreenList::mainScreen() const {
  NSScreen* screen = NSScreen.mainScreen;
  if (screen == nil) return std::nullopt;
  return screenOf(screen);
}

}  // namespace pellar
