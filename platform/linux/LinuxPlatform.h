#pragma once

#include <functional>
#include <memory>

#include "platform/Platform.h"
#include "platform/linux/applications/NoScripts.h"
#include "platform/linux/applications/X11Accessibility.h"
#include "platform/linux/applications/X11Applications.h"
#include "platform/linux/applications/X11Pump.h"
#include "platform/linux/applications/X11StripRoom.h"
#include "platform/linux/applications/X11Workspace.h"
#include "platform/linux/desktop/AutostartEntry.h"
#include "platform/linux/desktop/DesktopNotifications.h"
#include "platform/linux/desktop/QtAlerts.h"
#include "platform/linux/desktop/QtHttpClient.h"
#include "platform/linux/desktop/QtPasteboard.h"
#include "platform/linux/desktop/QtStatusBar.h"
#include "platform/linux/desktop/QtWindows.h"
#include "platform/linux/documents/NoPropertyLists.h"
#include "platform/linux/input/X11EventMonitors.h"
#include "platform/linux/input/X11EventTaps.h"
#include "platform/linux/panel/X11PanelFactory.h"
#include "platform/linux/popups/QtMenus.h"
#include "platform/linux/system/QtMainLoop.h"
#include "platform/linux/system/QtProgram.h"
#include "platform/linux/system/X11ScreenList.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Density.h"
#include "platform/linux/x11/X11Mirror.h"

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
  // See QtHttpClient.
  [[nodiscard]] bool mayBeLookingUpNames() const { return httpClient_.mayBeLookingUpNames(); }

 private:
  // Each needs those above it.
  std::unique_ptr<X11Connection> connection_;
  QtMainLoop loop_;
  X11Mirror mirror_;
  X11Density density_;
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
  NoPropertyLists propertyLists_;
  NoScripts scripts_;
  QtStatusBar statusBar_;
  QtWindows windows_;
  AutostartEntry loginItem_;
  QtHttpClient httpClient_;
  DesktopNotifications notifications_;
  QtProgram program_;
  X11StripRoom room_;
  X11Pump pump_;
  Platform platform_;
};

}  // namespace pellar
