#include "platform/sim/SimMac.h"

namespace pellar {

namespace {

UserFolders foldersIn(const std::filesystem::path& home) {
  return {home, home / "Library" / "Application Support", home / "Library" / "Logs" / "Pellar.log"};
}

}  // namespace

SimMac::SimMac() : platform_(platformOf(accessibility_, workspace_, web_)) {
  screens_.keyWindowFrame = [this] { return keyWindowFrame(); };
  desktop_.clampToScreens = [this](const AxRect& wanted) { return screens_.clamped(wanted); };
}

Platform SimMac::platformOf(Accessibility& accessibility, Workspace& workspace, HttpClient& client) {
  return {.mainLoop = mainLoop_,
          .accessibility = accessibility,
          .workspace = workspace,
          .screens = screens_,
          .panels = panels_,
          .eventMonitors = eventMonitors_,
          .eventTaps = eventTaps_,
          .menus = menus_,
          .alerts = alerts_,
          .pasteboard = pasteboard_,
          .propertyLists = propertyLists_,
          .scripts = scripts_,
          .statusBar = statusBar_,
          .windows = windows_,
          .loginItem = loginItem_,
          .httpClient = client,
          .notifications = notifications_,
          .application = program_,
          .bundle = {version, build, webSite},
          .folders = foldersIn(home_.path())};
}

std::optional<ScreenRect> SimMac::keyWindowFrame() const {
  if (const SimPanel* key = panels_.key()) return key->frame();
  const auto front = desktop_.frontApplication();
  if (!front || !front->focused) return std::nullopt;
  return screens_.toScreen(front->focused->frame);
}

SimMac::~SimMac() {
  // What waits in the loop may own panels and subscriptions, which need the parts below the loop.
  mainLoop_.clear();
}

SimApplication SimMac::launch(const SimLaunch& application) {
  const auto state = desktop_.launch(application.bundleId, application.name, application.policy);
  state->quirks.refuses = application.refusesAtFirst;
  if (application.inFront) desktop_.activate(state->description.pid);
  if (application.readyAfter.count() > 0)
    mainLoop_.later(application.readyAfter, [state] { state->quirks.refuses = SimRefusal::nothing; });
  if (application.launchedAfter.count() > 0) {
    mainLoop_.later(application.launchedAfter, [this, state] { desktop_.finishLaunching(*state); });
  } else {
    desktop_.finishLaunching(*state);
  }
  return {desktop_, screens_, state};
}

std::optional<SimWindow> SimMac::frontWindow() {
  const auto front = desktop_.frontApplication();
  if (!front || !front->focused) return std::nullopt;
  return SimWindow(desktop_, screens_, front->focused);
}

void SimMac::click(const SimWindow& window) {
  pointer_.click(screens_.toScreen(AxPoint{window.frame().midX(), window.frame().midY()}));
}

}  // namespace pellar
