#include "platform/mac/system/MacScreenList.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/ObservedNotification.h"

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

// Also told when the Dock or the menu bar takes another part of a screen (NSApplication.h).
Subscription MacScreenList::onChanged(std::function<void()> callback) {
  return observeNotification(NSNotificationCenter.defaultCenter,
                             NSApplicationDidChangeScreenParametersNotification, nil,
                             [callback = std::move(callback)](NSNotification*) { callback(); });
}

}  // namespace pellar
