#include "app/shell/WaitingPorts.h"

#include <memory>

namespace pellar {

Platform WaitingPorts::in(const Platform& platform, const Scope& waiting) {
  const auto ports = std::make_shared<WaitingPorts>(platform, waiting);
  return {.mainLoop = platform.mainLoop,
          .accessibility = platform.accessibility,
          .workspace = platform.workspace,
          .screens = platform.screens,
          .panels = platform.panels,
          .eventMonitors = platform.eventMonitors,
          .eventTaps = platform.eventTaps,
          .menus = platform.menus,
          .alerts = platform.alerts,
          .pasteboard = platform.pasteboard,
          .propertyLists = ports->propertyLists_,
          .scripts = ports->scripts_,
          .statusBar = platform.statusBar,
          .windows = platform.windows,
          .loginItem = platform.loginItem,
          .httpClient = platform.httpClient,
          .notifications = platform.notifications,
          .application = platform.application,
          .bundle = platform.bundle,
          .folders = platform.folders,
          .owner = ports};
}

}  // namespace pellar
