#pragma once

#include <functional>
#include <memory>

#include "platform/Platform.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DesktopNotifications.h"
#include "platform/linux/NoScripts.h"
#include "platform/linux/QtAlerts.h"
#include "platform/linux/QtHttpClient.h"
#include "platform/linux/QtMainLoop.h"
#include "platform/linux/QtMenus.h"
#include "platform/linux/QtPasteboard.h"
#include "platform/linux/QtProgram.h"
#include "platform/linux/QtStatusBar.h"
#include "platform/linux/QtWindows.h"
#include "platform/linux/X11Accessibility.h"
#include "platform/linux/X11Applications.h"
#include "platform/linux/X11Connection.h"
#include "platform/linux/X11EventMonitors.h"
#include "platform/linux/X11EventTaps.h"
#include "platform/linux/X11Mirror.h"
#include "platform/linux/X11PanelFactory.h"
#include "platform/linux/X11Pump.h"
#include "platform/linux/X11ScreenList.h"
#include "platform/linux/X11Workspace.h"
#include "platform/shared/PlistPropertyLists.h"

namespace pellar {

// Every port on an X11 desktop. Made after the toolkit's application object, on its thread; outlives the
// application it serves.
class LinuxPlatform {
 public:
  // Reads the desktop once. `onLost` is called from the main loop when the X server is gone.
  LinuxPlatform(std::unique_ptr<X11Connection> connection, std::function<void()> onLost);
  LinuxPlatform(const LinuxPlatform&) = delete;
  LinuxPlatform& operator=(const LinuxPlatform&) = delete;

  [[nodiscard]] const Platform& platform() const { return platform_; }
  [[nodiscard]] X11Connection& connection() { return *connection_; }
  // Opens the menu of the status item at the pointer, for a desktop without a tray.
  void openStatusMenu() { statusBar_.openMenu(); }
  // See QtHttpClient.
  [[nodiscard]] bool mayBeLookingUpNames() const { return httpClient_.mayBeLookingUpNames(); }

 private:
  // Each needs those above it.
  std::unique_ptr<X11Connection> connection_;
  QtMainLoop loop_;
  X11Mirror mirror_;
  X11Applications applications_;
  X11ScreenList screens_;
  X11Accessibility accessibility_;
  X11Workspace workspace_;
  X11EventMonitors monitors_;
  X11EventTaps eventTaps_;
  X11PanelFactory panels_;
  QtMenus menus_;
  QtAlerts alerts_;
  QtPasteboard pasteboard_;
  PlistPropertyLists propertyLists_;
  NoScripts scripts_;
  QtStatusBar statusBar_;
  QtWindows windows_;
  AutostartEntry loginItem_;
  QtHttpClient httpClient_;
  DesktopNotifications notifications_;
  QtProgram program_;
  X11Pump pump_;
  Platform platform_;
};

}  // namespace pellar
