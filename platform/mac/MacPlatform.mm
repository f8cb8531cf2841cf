#include "platform/mac/MacPlatform.h"

#include "platform/mac/system/MacUserFolders.h"

namespace pellar {

MacPlatform::MacPlatform()
    : accessibility_(loop_),
      monitors_(panels_),
      taps_(loop_),
      menus_(panels_),
      windows_(loop_),
      httpClient_(loop_),
      notifications_(loop_),
      platform_{.mainLoop = loop_,
                .accessibility = accessibility_,
                .workspace = workspace_,
                .screens = screens_,
                .panels = panels_,
                .eventMonitors = monitors_,
                .eventTaps = taps_,
                .menus = menus_,
                .alerts = alerts_,
                .pasteboard = pasteboard_,
                .propertyLists = propertyLists_,
                .scripts = scripts_,
                .statusBar = statusBar_,
                .windows = windows_,
                .loginItem = loginItem_,
                .httpClient = httpClient_,
                .notifications = notifications_,
                .application = application_,
                .bundle = macBundleInfo(),
                .folders = macUserFolders()} {}

}  // namespace pellar
