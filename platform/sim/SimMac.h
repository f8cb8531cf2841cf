#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Platform.h"
#include "platform/sim/applications/SimAccessibility.h"
#include "platform/sim/applications/SimApplication.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimWindow.h"
#include "platform/sim/applications/SimWorkspace.h"
#include "platform/sim/desktop/SimAlerts.h"
#include "platform/sim/desktop/SimHttpServer.h"
#include "platform/sim/desktop/SimLoginItem.h"
#include "platform/sim/desktop/SimPasteboard.h"
#include "platform/sim/desktop/SimStatusBar.h"
#include "platform/sim/desktop/SimUserNotifications.h"
#include "platform/sim/desktop/SimWindows.h"
#include "platform/sim/documents/PlistPropertyLists.h"
#include "platform/sim/input/SimEventMonitors.h"
#include "platform/sim/input/SimEventTaps.h"
#include "platform/sim/office/SimOffice.h"
#include "platform/sim/office/SimScripts.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/popups/SimMenus.h"
#include "platform/sim/system/SimMainLoop.h"
#include "platform/sim/system/SimProgram.h"
#include "platform/sim/system/SimScreens.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "platform/sim/user/SimFileDrag.h"
#include "platform/sim/user/SimKeyboard.h"
#include "platform/sim/user/SimPointer.h"
#include "platform/sim/user/SimScreenReader.h"
#include "platform/sim/user/StripReader.h"

namespace pellar {

// An application to launch.
struct SimLaunch {
  std::optional<std::string> bundleId = std::nullopt;
  std::optional<std::string> name = std::nullopt;
  ActivationPolicy policy = ActivationPolicy::regular;
  bool inFront = true;
  // What it refuses until it is ready, and how long that takes. The workspace may call it launched before.
  SimRefusal refusesAtFirst = SimRefusal::nothing;
  std::chrono::milliseconds readyAfter{0};
  std::chrono::milliseconds launchedAfter{0};
};

// A Mac in memory: applications with windows, screens, a mouse, a keyboard and a clock that moves only when
// told.
//
// What applications and windows do is heard by the program when the main loop next runs: settle() or
// advance(). What the user does with mouse and keyboard runs the loop itself.
class SimMac {
 public:
  SimMac();
  ~SimMac();
  SimMac(const SimMac&) = delete;
  SimMac& operator=(const SimMac&) = delete;

  [[nodiscard]] Platform& platform() { return platform_; }
  // The same with another port in place of this Mac's own, for instance one that fails.
  [[nodiscard]] Platform platformWith(Accessibility& accessibility) {
    return platformOf(accessibility, workspace_, web_);
  }
  [[nodiscard]] Platform platformWith(Workspace& workspace) {
    return platformOf(accessibility_, workspace, web_);
  }
  [[nodiscard]] Platform platformWith(HttpClient& client) {
    return platformOf(accessibility_, workspace_, client);
  }

  // Applications.
  SimApplication launch(const SimLaunch& application);
  void activate(const SimApplication& application) { desktop_.activate(application.pid()); }
  // The user chooses "Hide Others" in the menu of this application.
  void hideOthers(const SimApplication& application) { desktop_.hideOthers(*application.state_); }
  void terminate(const SimApplication& application) { desktop_.terminate(*application.state_); }
  // The user goes to another space.
  void showSpace(int space) { desktop_.showSpace(space); }
  void activatePellar() { desktop_.activatePellar(); }
  void leaveNobodyInFront() { desktop_.leaveNobodyInFront(); }
  // This program runs without a bundle.
  void setPellarBundleId(std::optional<std::string> id) { desktop_.pellarBundleId = std::move(id); }
  // The focused window of the application in front.
  [[nodiscard]] std::optional<SimWindow> frontWindow();

  // The bundle of the running program.
  static constexpr const char* version = "1.4.0";
  static constexpr const char* build = "127";
  static constexpr const char* webSite = "https://pellar.example";

  // Time.
  void settle() { mainLoop_.runUntilIdle(); }
  void advance(std::chrono::nanoseconds duration) { mainLoop_.advance(duration); }

  // The user.
  [[nodiscard]] SimPointer& pointer() { return pointer_; }
  [[nodiscard]] SimFileDrag& fileDrag() { return fileDrag_; }
  void type(std::string_view text) { keyboard_.type(text); }
  void pressKey(const std::string& selector) { keyboard_.command(selector); }
  // A key with modifiers, which taps see before the application in front does.
  void pressKey(std::uint16_t keyCode, std::uint64_t flags) { keyboard_.keyDown(keyCode, flags); }
  void click(const SimWindow& window);
  [[nodiscard]] SimScreenReader& screenReader() { return screenReader_; }
  [[nodiscard]] StripReader strip() { return {panels_, screens_, pointer_}; }

  // What applications tell, as it is delivered.
  [[nodiscard]] CallbackList<SimNotification>& applicationNotifications() { return desktop_.notifications(); }

  // The parts.
  [[nodiscard]] SimMainLoop& mainLoop() { return mainLoop_; }
  [[nodiscard]] SimAccessibility& accessibility() { return accessibility_; }
  [[nodiscard]] SimWorkspace& workspace() { return workspace_; }
  [[nodiscard]] SimScreens& screens() { return screens_; }
  [[nodiscard]] SimPanels& panels() { return panels_; }
  [[nodiscard]] SimEventMonitors& eventMonitors() { return eventMonitors_; }
  [[nodiscard]] SimEventTaps& eventTaps() { return eventTaps_; }
  [[nodiscard]] SimMenus& menus() { return menus_; }
  [[nodiscard]] SimAlerts& alerts() { return alerts_; }
  [[nodiscard]] SimPasteboard& pasteboard() { return pasteboard_; }
  [[nodiscard]] PlistPropertyLists& propertyLists() { return propertyLists_; }
  // The documents of the Office applications.
  [[nodiscard]] SimOffice& office() { return office_; }
  [[nodiscard]] SimScripts& scripts() { return scripts_; }
  [[nodiscard]] SimStatusBar& statusBar() { return statusBar_; }
  [[nodiscard]] SimWindows& windows() { return windows_; }
  [[nodiscard]] SimLoginItem& loginItem() { return loginItem_; }
  [[nodiscard]] SimHttpServer& web() { return web_; }
  [[nodiscard]] SimUserNotifications& notifications() { return notifications_; }
  [[nodiscard]] SimProgram& program() { return program_; }
  // The user's private home folder on the real disk, gone with this object.
  [[nodiscard]] const std::filesystem::path& home() const { return home_.path(); }

 private:
  [[nodiscard]] Platform platformOf(Accessibility& accessibility, Workspace& workspace, HttpClient& client);
  [[nodiscard]] std::optional<ScreenRect> keyWindowFrame() const;

  TemporaryFolder home_;
  SimMainLoop mainLoop_;
  SimScreens screens_{mainLoop_};
  SimDesktop desktop_{mainLoop_};
  SimAccessibility accessibility_{desktop_, mainLoop_};
  SimWorkspace workspace_{desktop_, mainLoop_};
  SimPanels panels_{mainLoop_, screens_};
  SimEventMonitors eventMonitors_;
  SimEventTaps eventTaps_{mainLoop_};
  SimMenus menus_{mainLoop_};
  SimAlerts alerts_{mainLoop_, desktop_, panels_};
  SimPasteboard pasteboard_;
  PlistPropertyLists propertyLists_{mainLoop_};
  SimOffice office_{desktop_, screens_, mainLoop_, home_.path()};
  SimScripts scripts_{office_};
  SimStatusBar statusBar_{mainLoop_};
  SimWindows windows_{mainLoop_, desktop_, panels_};
  SimLoginItem loginItem_;
  SimHttpServer web_{mainLoop_};
  SimUserNotifications notifications_{mainLoop_};
  SimProgram program_;
  SimPointer pointer_{mainLoop_, desktop_, screens_, panels_, eventMonitors_};
  SimFileDrag fileDrag_{mainLoop_, panels_};
  SimScreenReader screenReader_{mainLoop_, panels_, eventMonitors_};
  SimKeyboard keyboard_{mainLoop_, desktop_, panels_, eventTaps_, windows_};
  Platform platform_;
};

}  // namespace pellar
