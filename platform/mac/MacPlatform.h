#pragma once

#include "platform/Platform.h"
#include "platform/mac/applications/MacAccessibility.h"
#include "platform/mac/applications/MacScriptRunner.h"
#include "platform/mac/applications/MacWorkspace.h"
#include "platform/mac/desktop/MacAlerts.h"
#include "platform/mac/desktop/MacHttpClient.h"
#include "platform/mac/desktop/MacLoginItem.h"
#include "platform/mac/desktop/MacPasteboard.h"
#include "platform/mac/desktop/MacStatusBar.h"
#include "platform/mac/desktop/MacUserNotifications.h"
#include "platform/mac/desktop/MacWindows.h"
#include "platform/mac/input/MacEventMonitors.h"
#include "platform/mac/input/MacEventTaps.h"
#include "platform/mac/panel/MacPanelFactory.h"
#include "platform/mac/popups/MacMenus.h"
#include "platform/mac/system/MacApplication.h"
#include "platform/mac/system/MacMainLoop.h"
#include "platform/mac/system/MacPropertyLists.h"
#include "platform/mac/system/MacScreenList.h"

namespace pellar {

// Every port on a Mac. Made on the main thread after the shared application; outlives what it serves.
class MacPlatform {
 public:
  MacPlatform();
  MacPlatform(const MacPlatform&) = delete;
  MacPlatform& operator=(const MacPlatform&) = delete;

  [[nodiscard]] const Platform& platform() const { return platform_; }

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
