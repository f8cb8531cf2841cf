#pragma once

#include "platform/Platform.h"
#include "platform/mac/MacAccessibility.h"
#include "platform/mac/MacAlerts.h"
#include "platform/mac/MacApplication.h"
#include "platform/mac/MacEventMonitors.h"
#include "platform/mac/MacEventTaps.h"
#include "platform/mac/MacHttpClient.h"
#include "platform/mac/MacLoginItem.h"
#include "platform/mac/MacMainLoop.h"
#include "platform/mac/MacMenus.h"
#include "platform/mac/MacPanelFactory.h"
#include "platform/mac/MacPasteboard.h"
#include "platform/mac/MacPropertyLists.h"
#include "platform/mac/MacScreenList.h"
#include "platform/mac/MacScriptRunner.h"
#include "platform/mac/MacStatusBar.h"
#include "platform/mac/MacUserNotifications.h"
#include "platform/mac/MacWindows.h"
#include "platform/mac/MacWorkspace.h"

namespace pellar {

// Every port on a Mac. Made on the main thread after the shared application; outlives what it serves.
class MacPlatform {
 public:
  MacPlatform();
  MacPlatform(const MacPlatform&) = delete;
  MacPlatform& operator=(const MacPlatform&) = delete;

  [[nodiscard]] const Platform& platform() const { return platform_; }

  // The program was started once more.
  void openStatusMenu() { statusBar_.openMenu(); }

 private:
  // Each needs those above it.
  MacMainLoop loop_;
  MacAccessibility accessibility_;
  MacWorkspace workspace_;
  MacScreenList screens_;
  MacPanelFactory panels_;
  MacEventMonitors monitors_;
  MacEventTaps taps_;
  MacMenus menus_;
  MacAlerts alerts_;
  MacPasteboard pasteboard_;
  MacPropertyLists propertyLists_;
  MacScriptRunner scripts_;
  MacStatusBar statusBar_;
  MacWindows windows_;
  MacLoginItem loginItem_;
  MacHttpClient httpClient_;
  MacUserNotifications notifications_;
  MacApplication application_;
  Platform platform_;
};

}  // namespace pellar
