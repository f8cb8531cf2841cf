#pragma once

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "tests/e2e/Folders.h"
#include "tests/e2e/Process.h"
#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

enum class WindowManager { openbox, metacity, xfwm4, kwin, icewm, fluxbox, i3 };

// What gives a window the keyboard: a click, or that the pointer comes to it.
enum class Focus { byClick, byPointer };

// The path of a program of the same build as this one.
std::string builtProgram(const std::string& name);

std::string nameOf(WindowManager manager);
// For the test framework's messages.
void PrintTo(WindowManager manager, std::ostream* stream);
// Under which ones the stories are told: the three that the set-up installs, or those named, with commas, in
// PELLAR_WINDOW_MANAGERS.
std::vector<WindowManager> windowManagers();

// A window of some program, as a user means it.
struct Window {
  xcb_window_t id = XCB_NONE;
  friend bool operator==(const Window&, const Window&) = default;
};

class Desktop;

// A plain program of several windows that does what a test tells it.
class Application {
 public:
  Application(Desktop& desktop, const std::string& className);

  // Opens a window there (its frame's corner, its own size) and waits until it is the active one.
  Window open(const std::string& title, const Box& place);
  // The same without waiting, for windows that will not become active or not even stay.
  Window openWithoutWaiting(const std::string& title, const Box& place, int shadow = 0);
  // A window that decorates itself, with a shadow of that many pixels around what is seen of it.
  Window openWithShadow(const std::string& title, const Box& place, int shadow);
  // The program itself gives a window another title, in any bytes.
  void setTitle(Window window, const std::string& title);
  // A command to one window, of those that PlainWindows::run knows: "destroy", "fixed", "dialog PARENT",
  // "storm COUNT PER-SECOND", "theme NAME" (of the desktop, as a settings service says it) and others.
  void tell(Window window, const std::string& command);
  void tellWithoutWaiting(Window window, const std::string& command);
  // Opens and destroys that many windows in one go.
  void churn(int count);
  void waitUntilDone();

  [[nodiscard]] Process& process() { return process_; }
  void quit() { process_.end(); }

 private:
  void waitUntilShown(Window window, const std::string& title);

  Desktop& desktop_;
  Process process_;
};

// A private X server with a window manager and programs on it, and an observer that works mouse and keyboard.
// All of it ends with this object.
class Desktop {
 public:
  explicit Desktop(WindowManager manager, int width = 1440, int height = 900, Focus focus = Focus::byClick);
  ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  [[nodiscard]] XObserver& observer() { return *observer_; }
  [[nodiscard]] const Folders& folders() const { return folders_; }
  [[nodiscard]] const std::string& display() const { return display_; }
  [[nodiscard]] Process& server() { return *server_; }
  [[nodiscard]] WindowManager windowManager() const { return manager_; }
  // The program that is the window manager.
  [[nodiscard]] const Process& windowManagerProcess() const { return *windowManager_; }

  // Gives the desktop a session bus, on which programs can be asked about their menus. Programs started from
  // now on know of it; the window manager does not.
  void openSessionBus();
  // The bus that openSessionBus() started.
  [[nodiscard]] Process& sessionBus() { return *bus_; }
  // Variables for a program on this desktop.
  [[nodiscard]] Environment environment() const;

  // Starts any program in this desktop's surroundings.
  std::unique_ptr<Process> start(const std::vector<std::string>& command, const std::string& name);
  // Runs a program to its end; throws when it fails.
  void run(const std::vector<std::string>& command);
  // Waits for a window whose title contains that and makes it active.
  Window waitForWindow(const std::string& titlePart, std::chrono::milliseconds deadline = patience);

  // Says in the desktop's settings how many dots its fonts have to an inch; 96 at 100 %.
  void setFontDots(const std::string& dots);

  // What a user does through the window manager. Each waits until it is seen to have happened.
  void activate(Window window);
  void move(Window window, int x, int y);
  void resize(Window window, int width, int height);
  void minimise(Window window);
  void restore(Window window) { activate(window); }
  void close(Window window);
  void setState(Window window, const std::string& state, bool on);
  void enterFullScreen(Window window) { setState(window, "_NET_WM_STATE_FULLSCREEN", true); }
  void leaveFullScreen(Window window) { setState(window, "_NET_WM_STATE_FULLSCREEN", false); }
  void maximise(Window window);
  // Goes to another of the window manager's desktops, counted from 0.
  void showDesktop(std::uint32_t number);
  // Moves a window to another desktop.
  void sendTo(std::uint32_t number, Window window);
  // Ends the window manager and starts it anew, as a user does who has changed its settings.
  void restartWindowManager();
  // Ends the window manager in order; none follows.
  void endWindowManager();
  // Drags a window by its title bar, as far as the window manager goes along.
  void dragByTitleBar(Window window, int byX, int byY);
  // Moves the pointer in steps with the button held.
  void drag(int fromX, int fromY, int toX, int toY);
  // The same without letting go of the button.
  void dragAndHold(int fromX, int fromY, int toX, int toY);

  [[nodiscard]] bool isActive(Window window) { return observer_->activeWindow() == window.id; }
  void waitUntilActive(Window window);
  // How often a window of an Application received a key, by its symbol.
  [[nodiscard]] int keysReceived(Window window, std::uint32_t keysym);
  // Until it is so often.
  void waitUntilReceived(Window window, std::uint32_t keysym, int count);
  [[nodiscard]] Box frame(Window window);

 private:
  void configure() const;
  void configureFocusByPointer() const;
  void startWindowManager(const std::vector<std::string>& options = {});
  void startBus();

  WindowManager manager_;
  Focus focus_;
  Folders folders_;
  std::string display_;
  std::unique_ptr<Process> server_;
  std::unique_ptr<XObserver> observer_;
  std::unique_ptr<Process> bus_;
  std::string busAddress_;
  bool busIsOpen_ = false;  // for all programs, not just a window manager that does not start without one
  std::unique_ptr<Process> windowManager_;
};

}  // namespace pellar::e2e
