#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Geometry.h"
#include "platform/Accessibility.h"
#include "platform/Workspace.h"
#include "platform/shared/system/CallbackList.h"
#include "platform/sim/faults/SimQuirks.h"
#include "platform/sim/menus/SimMenuBar.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

struct SimWindowState;
using SimWindowPointer = std::shared_ptr<SimWindowState>;

// Windows that share one frame as native window tabs, of which one is selected. Only that one is a window to
// Accessibility; the elements of the others come and go with the selection
// (github.com/KiwiCanopy/KiwiDesk/issues/310, github.com/asmvik/yabai/issues/68).
struct SimTabGroup {
  std::weak_ptr<SimWindowState> selected;
};
using SimWindowGroup = std::shared_ptr<SimTabGroup>;

struct SimWindowState {
  std::uint64_t serial = 0;
  ProcessId pid = 0;
  std::string title;
  std::string subrole = "AXStandardWindow";
  AxRect frame;
  AxRect frameBeforeFullScreen;
  bool minimised = false;
  bool fullScreen = false;
  bool atRest = true;  // not while the system moves it in several steps
  CallbackList<> cameToRest;
  int space = 0;
  SimWindowGroup tabGroup;  // native window tabs; null when it is in no group
  std::optional<std::string> document;
  bool exists = true;
  bool listed = true;  // a window that is gone may still be listed for a while
  int closePresses = 0;
  int raises = 0;
  SimWindowQuirks quirks;
};

// A key that an application received.
struct SimKey {
  std::uint16_t keyCode = 0;
  std::uint64_t flags = 0;
  friend bool operator==(const SimKey&, const SimKey&) = default;
};

struct SimApplicationState {
  RunningApplication description;
  bool running = true;
  bool hidden = false;
  std::vector<SimWindowPointer> frontToBack;
  std::vector<SimWindowPointer> byCreation;
  SimWindowPointer focused;
  SimWindowPointer madeMain;  // by hand, apart from the focused one; null when that is the main one, too
  [[nodiscard]] const SimWindowPointer& mainWindow() const { return madeMain ? madeMain : focused; }
  SimMenuPointer menuBar;        // null when it has none
  std::string typed;             // text that went to it
  std::vector<SimKey> keysDown;  // keys with modifiers that went to it
  SimApplicationQuirks quirks;
};
using SimApplicationPointer = std::shared_ptr<SimApplicationState>;

// An Accessibility notification on its way; `window` is the serial of the window it is about, 0 for the
// application.
struct SimNotification {
  ProcessId pid = 0;
  std::uint64_t window = 0;
  std::string name;
};

// The simulated applications and their windows, and what happens to them. Every change of it is one a real
// desktop makes; the ports read it, the user's actions and Accessibility writes change it.
class SimDesktop {
 public:
  static constexpr ProcessId pellarPid = 400;

  explicit SimDesktop(SimMainLoop& loop);

  SimApplicationPointer launch(std::optional<std::string> bundleId, std::optional<std::string> name,
                               ActivationPolicy policy);
  // It has launched as far as the workspace is concerned.
  void finishLaunching(SimApplicationState& application);
  void terminate(SimApplicationState& application);
  // Brings an application to the front. Nothing happens when it is not running or in front already.
  void activate(ProcessId pid);
  // This program itself comes to the front, as a click into one of its key panels can make it.
  void activatePellar();
  // No application at all is in front.
  void leaveNobodyInFront();
  void setHidden(SimApplicationState& application, bool hidden);
  // What "Hide Others" in the menu of an application does: all other applications are hidden, this program
  // with them. Of its windows those stay that may not hide (canHide, NSWindow.h), as none of its panels may.
  void hideOthers(const SimApplicationState& application);
  [[nodiscard]] bool pellarHidden() const { return pellarHidden_; }
  void setHung(SimApplicationState& application, bool hung);
  // What an application that is hung was asked and will do once it goes on; nothing when it ends before.
  void whenResumed(const SimApplicationState& application, std::function<void()> work);

  // Gives the application another menu bar; with no titles at all, none.
  void setMenuBar(SimApplicationState& application, const std::vector<SimMenuTitle>& titles);

  SimWindowPointer open(SimApplicationState& application, std::string title, const AxRect& frame,
                        std::string subrole);
  void focus(const SimWindowPointer& window);
  // Another process writes "AXMain".
  void makeMain(const SimWindowPointer& window);
  void focusNothing(SimApplicationState& application);
  void setMinimised(const SimWindowPointer& window, bool minimised);
  void setFullScreen(const SimWindowPointer& window, bool fullScreen, const AxRect& screen);
  void setTitle(SimWindowState& window, std::string title);
  void setFrame(SimWindowState& window, const AxRect& frame);
  // The space that a window is on, and the one that is shown. The application whose window is in front on it
  // comes to the front; over a space without windows the one that was stays.
  void setSpace(SimWindowState& window, int space);
  void showSpace(int space);
  // Whether a window can be seen and reached: not minimised, on the space shown, not behind another tab.
  [[nodiscard]] bool isOnScreen(const SimWindowState& window) const;
  // Whether its application names it at the moment. It names those of the space that is shown
  // (github.com/kasper/phoenix/issues/131, #303; github.com/asmvik/yabai/issues/2126).
  [[nodiscard]] bool isNamed(const SimWindowState& window) const;
  // Whether another tab of its group is selected, so that it is no window to Accessibility.
  [[nodiscard]] static bool isBehindNativeTab(const SimWindowState& window);
  // Makes the windows native tabs of one, the last one selected; selects another one of its group.
  void joinAsTabs(const std::vector<SimWindowPointer>& windows);
  void selectNativeTab(const SimWindowPointer& window);
  // The window goes; with `stillListed` nothing says so and the application goes on naming it.
  void destroy(const SimWindowPointer& window, bool stillListed = false);

  // Writes of another process, which the window's quirks change, put off or refuse.
  void requestPosition(const SimWindowPointer& window, AxPoint position);
  void requestSize(const SimWindowPointer& window, Size size);

  [[nodiscard]] SimApplicationPointer application(ProcessId pid) const;
  [[nodiscard]] const std::vector<SimApplicationPointer>& frontToBack() const { return frontToBack_; }
  [[nodiscard]] std::optional<RunningApplication> frontmost() const;
  [[nodiscard]] SimApplicationPointer frontApplication() const;  // null while Pellar or nobody is in front
  // The window that a click at this point would land in; null for the desktop's background.
  [[nodiscard]] SimWindowPointer windowAt(AxPoint point) const;

  std::optional<std::string> pellarBundleId = "app.pellar.Pellar";
  // Counts every change of the desktop.
  [[nodiscard]] std::uint64_t revision() const { return revision_; }
  // Something changed that no notification tells.
  void changedSilently() { ++revision_; }

  CallbackList<SimNotification>& notifications() { return notifications_; }
  CallbackList<>& activated() { return activated_; }
  CallbackList<std::optional<ProcessId>>& terminated() { return terminated_; }
  CallbackList<ProcessId>& launched() { return launched_; }
  CallbackList<>& spaceChanged() { return spaceChanged_; }

  // Where a window may be put by another process: the system keeps its top under the menu bar and a part of
  // it on a screen (github.com/dmarcotte/easy-move-resize/pull/20, github.com/mjolnirapp/mjolnir/issues/224).
  std::function<AxPoint(const AxRect& wanted)> clampToScreens;

 private:
  enum class Front { application, pellar, nobody };

  void notify(SimApplicationState& application, std::uint64_t window, std::string_view name);
  void notify(const SimWindowState& window, std::string_view name);
  void bringNextToFront();
  void focusNext(SimApplicationState& application);
  void setFocused(SimApplicationState& application, SimWindowPointer window);
  void later(const SimWindowPointer& window, std::function<void(SimWindowState&)> change);

  SimMainLoop& loop_;
  ProcessId nextPid_ = 500;
  std::uint64_t nextSerial_ = 1;
  std::uint64_t revision_ = 0;
  Front front_ = Front::nobody;
  int shownSpace_ = 0;
  bool pellarHidden_ = false;
  std::vector<SimApplicationPointer> frontToBack_;                       // in order of last activation
  std::vector<SimNotification> heldBack_;                                // of hung applications
  std::map<ProcessId, std::vector<std::function<void()>>> waitingWork_;  // likewise
  CallbackList<SimNotification> notifications_;
  CallbackList<> activated_;
  CallbackList<std::optional<ProcessId>> terminated_;
  CallbackList<ProcessId> launched_;
  CallbackList<> spaceChanged_;
};

}  // namespace pellar
