#include "platform/linux/LinuxPlatform.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/system/PlatformFolders.h"
#include "platform/shared/system/BuiltBundle.h"

namespace pellar {
namespace {

std::filesystem::path ownProgram() {
  std::error_code ignored;  // without a path there is no entry to write
  return std::filesystem::read_symlink("/proc/self/exe", ignored);
}

}  // namespace

LinuxPlatform::LinuxPlatform(std::unique_ptr<X11Connection> connection, std::function<void()> onLost)
    : connection_(std::move(connection)),
      mirror_(*connection_),
      density_(*connection_, mirror_),
      applications_(mirror_, loop_, DesktopEntries(dataFolders())),
      screens_(*connection_, density_, mirror_, loop_),
      accessibility_(*connection_, mirror_, density_, applications_, screens_, loop_),
      workspace_(applications_, accessibility_, loop_),
      monitors_(*connection_, loop_),
      eventTaps_(loop_),
      panels_(*connection_, mirror_, loop_, screens_, density_, monitors_,
              [this](const ObservedClick& click) { monitors_.localMouseDown(click); }),
      menus_(*connection_, density_, screens_, monitors_),
      alerts_(*connection_, [this] { return panels_.shownFrames(); }),
      statusBar_(loop_, monitors_),
      loginItem_(configFolder(), ownProgram()),
      notifications_(loop_),
      room_(*connection_, mirror_, applications_, density_, screens_),
      pump_(*connection_, mirror_, applications_, loop_, std::move(onLost)),
      platform_{.mainLoop = loop_,
                .accessibility = accessibility_,
                .workspace = workspace_,
                .screens = screens_,
                .panels = panels_,
                .eventMonitors = monitors_,
                .eventTaps = eventTaps_,
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
                .application = program_,
                .bundle = builtBundle(),
                .folders = platformFolders()} {
  applications_.onScreensChanged = [this] { screens_.noteChange(); };
  applications_.onChanges = [this](const X11Mirror::Changes& changes) {
    accessibility_.note(changes);
    room_.note(changes);
    panels_.noteWindows(changes.windows);
  };
  accessibility_.onActivating = [this] { panels_.noteActivating(); };
  pump_.onQuiet = [this] { room_.update(panels_.stripFrame()); };
  mirror_.readStale();
  applications_.update();
}

}  // namespace pellar
