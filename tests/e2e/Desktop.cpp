#include "tests/e2e/Desktop.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace pellar::e2e {

namespace {

std::string toHex(const std::string& bytes) {
  static const char* digits = "0123456789abcdef";
  std::string result;
  for (const char byte : bytes) {
    result += digits[static_cast<unsigned char>(byte) >> 4];
    result += digits[static_cast<unsigned char>(byte) & 15];
  }
  return result;
}

std::vector<std::string> commandOf(WindowManager manager) {
  switch (manager) {
    case WindowManager::openbox:
      return {"openbox", "--sm-disable"};
    case WindowManager::metacity:
      return {"metacity", "--no-composite", "--sm-disable"};
    case WindowManager::xfwm4:
      return {"xfwm4", "--compositor=off"};
    case WindowManager::kwin:
      return {"kwin_x11", "--no-kactivities"};
    case WindowManager::icewm:
      return {"icewm"};
    case WindowManager::fluxbox:
      return {"fluxbox"};
    case WindowManager::i3:
      return {"i3"};
  }
  return {};
}

// The display number that Xvfb writes when it is ready; empty when it ended instead.
std::string displayFrom(int descriptor) {
  std::string text;
  char character = 0;
  for (;;) {
    pollfd entry{descriptor, POLLIN, 0};
    if (poll(&entry, 1, static_cast<int>(patience.count())) <= 0) return {};
    if (read(descriptor, &character, 1) != 1) return {};
    if (character == '\n') return ":" + text;
    text += character;
  }
}

}  // namespace

std::string builtProgram(const std::string& name) {
  return (std::filesystem::read_symlink("/proc/self/exe").parent_path() / name).string();
}

std::string nameOf(WindowManager manager) {
  return commandOf(manager).front();
}

void PrintTo(WindowManager manager, std::ostream* stream) {
  *stream << nameOf(manager);
}

std::vector<WindowManager> windowManagers() {
  const char* const named = std::getenv("PELLAR_WINDOW_MANAGERS");
  if (named == nullptr) return {WindowManager::openbox, WindowManager::metacity, WindowManager::xfwm4};
  std::vector<WindowManager> result;
  std::istringstream names(named);
  for (std::string name; std::getline(names, name, ',');) {
    for (const auto manager :
         {WindowManager::openbox, WindowManager::metacity, WindowManager::xfwm4, WindowManager::kwin,
          WindowManager::icewm, WindowManager::fluxbox, WindowManager::i3}) {
      if (nameOf(manager) == name) result.push_back(manager);
    }
  }
  return result;
}

Application::Application(Desktop& desktop, const std::string& className)
    : desktop_(desktop),
      process_({builtProgram("e2e_windows"), className}, desktop.environment(),
               desktop.folders().root() / (className + ".errors")) {}

Window Application::openWithoutWaiting(const std::string& title, const Box& place, int shadow) {
  process_.write("open " + std::to_string(place.x) + " " + std::to_string(place.y) + " " +
                 std::to_string(place.width) + " " + std::to_string(place.height) + " " +
                 std::to_string(shadow) + " " + toHex(title));
  return {static_cast<xcb_window_t>(std::stoul(process_.readLine()))};
}

Window Application::open(const std::string& title, const Box& place) {
  return openWithShadow(title, place, 0);
}

Window Application::openWithShadow(const std::string& title, const Box& place, int shadow) {
  const auto window = openWithoutWaiting(title, place, shadow);
  waitUntilShown(window, title);
  desktop_.activate(window);
  return window;
}

void Application::waitUntilShown(Window window, const std::string& title) {
  desktop_.observer().waitUntil("window \"" + title + "\" is on the desktop", [&] {
    const auto all = desktop_.observer().clients();
    return std::find(all.begin(), all.end(), window.id) != all.end() &&
           desktop_.observer().isViewable(window.id);
  });
}

void Application::setTitle(Window window, const std::string& title) {
  tell(window, "title " + toHex(title));
}

void Application::tell(Window window, const std::string& command) {
  tellWithoutWaiting(window, command);
  waitUntilDone();
}

void Application::tellWithoutWaiting(Window window, const std::string& command) {
  const auto verbEnd = std::min(command.find(' '), command.size());
  process_.write(command.substr(0, verbEnd) + " " + std::to_string(window.id) + command.substr(verbEnd));
}

void Application::churn(int count) {
  process_.write("churn " + std::to_string(count));
  waitUntilDone();
}

void Application::waitUntilDone() {
  if (const auto answer = process_.readLine(); answer != "done")
    throw std::runtime_error("e2e_windows: " + answer);
}

Desktop::Desktop(WindowManager manager, int width, int height, Focus focus)
    : manager_(manager), focus_(focus) {
  int numberPipe[2];
  if (pipe2(numberPipe, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
  server_ = std::make_unique<Process>(
      std::vector<std::string>{"Xvfb", "-displayfd", "3", "-screen", "0",
                               std::to_string(width) + "x" + std::to_string(height) + "x24", "-nolisten",
                               "tcp", "-noreset"},
      folders_.environment(""), folders_.root() / "Xvfb.errors", Process::Inherited{{3, numberPipe[1]}});
  ::close(numberPipe[1]);
  display_ = displayFrom(numberPipe[0]);
  ::close(numberPipe[0]);
  if (display_.empty()) throw std::runtime_error("Xvfb does not start: " + server_->errors());

  observer_ = std::make_unique<XObserver>(display_);
  configure();
  if (focus == Focus::byPointer) configureFocusByPointer();
  startWindowManager();
  observer_->waitUntil(nameOf(manager) + " is ready", [this] { return observer_->windowManagerReady(); });
  observer_->waitUntilWindowsAreManaged();
}

// What makes a window manager's first start as bare as the others', with four desktops.
void Desktop::configure() const {
  const auto write = [this](const std::string& place, const std::string& text) {
    folders_.write(folders_.root() / place, text);
  };
  // Its own settings, but that a key maximises a window as it does elsewhere.
  std::string openbox = Folders::read("/etc/xdg/openbox/rc.xml");
  constexpr std::string_view keys = "<keyboard>";
  if (const auto at = openbox.find(keys); at != std::string::npos) {
    openbox.insert(at + keys.size(), "<keybind key=\"A-F10\"><action name=\"ToggleMaximize\"/></keybind>");
    write("config/openbox/rc.xml", openbox);
  }
  write("config/kwinrc", "[Desktops]\nNumber=4\nRows=1\n");
  write("home/.icewm/preferences", "ShowTaskBar=0\n");
  write("config/i3/config", "# i3 config file (v4)\nfor_window [title=\"^Floating\"] floating enable\n");
  const auto overlay = folders_.home() / ".fluxbox/overlay";
  write("home/.fluxbox/overlay", "background: none\n");
  write("home/.fluxbox/init",
        "session.styleOverlay: " + overlay.string() + "\nsession.screen0.toolbar.visible: false\n");
}

// At once, so that a story does not have to wait for what must not happen.
void Desktop::configureFocusByPointer() const {
  const auto write = [this](const std::string& place, const std::string& text) {
    folders_.write(folders_.root() / place, text);
  };
  std::string openbox = Folders::read(folders_.config() / "openbox/rc.xml");
  const auto replace = [&openbox](std::string_view before, std::string_view now) {
    if (const auto at = openbox.find(before); at != std::string::npos)
      openbox.replace(at, before.size(), now);
  };
  replace("<followMouse>no", "<followMouse>yes");
  replace("<focusDelay>200", "<focusDelay>0");
  write("config/openbox/rc.xml", openbox);
  write("config/glib-2.0/settings/keyfile", "[org/gnome/desktop/wm/preferences]\nfocus-mode='sloppy'\n");
  write("config/xfce4/xfconf/xfce-perchannel-xml/xfwm4.xml",
        "<channel name=\"xfwm4\" version=\"1.0\"><property name=\"general\" type=\"empty\">"
        "<property name=\"click_to_focus\" type=\"bool\" value=\"false\"/>"
        "<property name=\"focus_delay\" type=\"int\" value=\"5\"/></property></channel>\n");
}

void Desktop::startWindowManager(const std::vector<std::string>& options) {
  auto environment = folders_.environment(display_);
  if (focus_ == Focus::byPointer) environment["GSETTINGS_BACKEND"] = "keyfile";
  if (manager_ == WindowManager::xfwm4) {
    startBus();
    environment["DBUS_SESSION_BUS_ADDRESS"] = busAddress_;
  }
  auto command = commandOf(manager_);
  command.insert(command.end(), options.begin(), options.end());
  windowManager_ =
      std::make_unique<Process>(command, environment, folders_.root() / (nameOf(manager_) + ".errors"));
}

void Desktop::startBus() {
  if (bus_) return;
  bus_ = start(folders_.busCommand(), "dbus-daemon");
  busAddress_ = bus_->readLine();
}

void Desktop::openSessionBus() {
  startBus();
  if (std::exchange(busIsOpen_, true)) return;
  // A toolkit that comes to a bus whose registry is just starting may stay away for good.
  run({"dbus-send", "--session", "--print-reply", "--dest=org.a11y.Bus", "/org/a11y/bus",
       "org.a11y.Bus.GetAddress"});
}

Environment Desktop::environment() const {
  auto variables = folders_.environment(display_);
  if (busIsOpen_) {
    variables["DBUS_SESSION_BUS_ADDRESS"] = busAddress_;
    variables.erase("NO_AT_BRIDGE");
  }
  return variables;
}

Desktop::~Desktop() {
  if (windowManager_) windowManager_->end();
  if (bus_) bus_->end();
  observer_.reset();
  server_->end();
}

std::unique_ptr<Process> Desktop::start(const std::vector<std::string>& command, const std::string& name) {
  return std::make_unique<Process>(command, environment(), folders_.root() / (name + ".errors"));
}

void Desktop::run(const std::vector<std::string>& command) {
  const auto process = start(command, "command");
  const auto ending = process->waitForEnd();
  if (!ending || ending->exitCode != 0)
    throw std::runtime_error(command.front() + " failed: " + process->errors());
}

Window Desktop::waitForWindow(const std::string& titlePart, std::chrono::milliseconds deadline) {
  Window window;
  observer_->waitUntil(
      "a window titled \"" + titlePart + "\"",
      [&] {
        const auto found = observer_->clientTitled(titlePart);
        window.id = found.value_or(XCB_NONE);
        return found.has_value() && observer_->isViewable(*found);
      },
      deadline);
  activate(window);
  return window;
}

void Desktop::waitUntilActive(Window window) {
  observer_->waitUntil("window " + std::to_string(window.id) + " is active",
                       [&] { return isActive(window); });
}

void Desktop::setFontDots(const std::string& dots) {
  const std::string resources = "Xcursor.size:\t24\nXft.dpi:\t" + dots + "\n";
  xcb_change_property(observer_->connection(), XCB_PROP_MODE_REPLACE, observer_->root(),
                      XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(resources.size()), resources.data());
  observer_->fence();
}

void Desktop::activate(Window window) {
  // A request without a time counts from when the window manager comes to it, and beats a later click on a
  // tab.
  observer_->sendToRoot(window.id, "_NET_ACTIVE_WINDOW", {2, observer_->serverTime(), 0});
  waitUntilActive(window);
  observer_->waitUntil("window is shown", [&] { return observer_->isViewable(window.id); });
}

Box Desktop::frame(Window window) {
  const auto box = observer_->frame(window.id);
  if (!box) throw std::runtime_error("window " + std::to_string(window.id) + " is gone");
  return *box;
}

void Desktop::move(Window window, int x, int y) {
  observer_->configure(window.id, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                       {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)});
  observer_->waitUntil("window moved to " + std::to_string(x) + "," + std::to_string(y), [&] {
    const auto box = frame(window);
    return box.x == x && box.y == y;
  });
}

void Desktop::resize(Window window, int width, int height) {
  observer_->configure(window.id, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                       {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)});
  observer_->waitUntil("window resized", [&] {
    const auto box = observer_->box(window.id);
    return box && box->width == width && box->height == height;
  });
}

void Desktop::minimise(Window window) {
  observer_->sendToRoot(window.id, "WM_CHANGE_STATE", {3});
  observer_->waitUntil("window is minimised", [&] { return observer_->managedState(window.id) == 3; });
}

void Desktop::close(Window window) {
  observer_->sendToRoot(window.id, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, 2});
  observer_->waitUntil("window is closed", [&] { return !observer_->box(window.id).has_value(); });
}

void Desktop::setState(Window window, const std::string& state, bool on) {
  observer_->sendToRoot(window.id, "_NET_WM_STATE", {on ? 1U : 0U, observer_->atom(state), 0, 2});
  observer_->waitUntil("window has " + std::string(on ? "" : "not ") + state,
                       [&] { return observer_->hasState(window.id, state) == on; });
}

void Desktop::maximise(Window window) {
  observer_->sendToRoot(window.id, "_NET_WM_STATE",
                        {1, observer_->atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                         observer_->atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2});
}

void Desktop::showDesktop(std::uint32_t number) {
  observer_->sendToRoot(observer_->root(), "_NET_CURRENT_DESKTOP", {number, observer_->serverTime()});
  observer_->waitUntil("desktop " + std::to_string(number) + " is shown", [&] {
    return observer_->numbers(observer_->root(), "_NET_CURRENT_DESKTOP") == std::vector{number};
  });
}

void Desktop::sendTo(std::uint32_t number, Window window) {
  observer_->sendToRoot(window.id, "_NET_WM_DESKTOP", {number, 2});
  observer_->waitUntil("the window is on desktop " + std::to_string(number), [&] {
    return observer_->numbers(window.id, "_NET_WM_DESKTOP") == std::vector{number};
  });
}

void Desktop::restartWindowManager() {
  const auto check = [this] { return observer_->numbers(observer_->root(), "_NET_SUPPORTING_WM_CHECK"); };
  const auto before = check();
  auto clients = observer_->clients();
  std::ranges::sort(clients);
  auto former = std::exchange(windowManager_, nullptr);
  startWindowManager({"--replace"});
  observer_->waitUntil("another window manager has taken all windows over", [&] {
    auto now = observer_->clients();
    std::ranges::sort(now);
    return check() != before && now == clients;
  });
  // It may list them before it does what it is asked.
  const Window last{observer_->clients().back()};
  observer_->waitUntil("it makes a window active", [&] {
    observer_->sendToRoot(last.id, "_NET_ACTIVE_WINDOW", {2, observer_->serverTime(), 0});
    return observer_->activeWindow() == last.id;
  });
  former->waitForEnd();
}

void Desktop::endWindowManager() {
  std::exchange(windowManager_, nullptr)->end();
  observer_->waitUntil("no window manager is left", [this] { return !observer_->windowManagerReady(); });
}

void Desktop::dragByTitleBar(Window window, int byX, int byY) {
  const auto before = frame(window);
  const int x = before.x + before.width / 2;
  const int y = before.y + 10;
  observer_->movePointer(x, y);
  observer_->press(1);
  // A window manager takes the pointer only after some movement, and may miss what came before that.
  int wobble = 0;
  observer_->waitUntil("the window is dragged along", [&] {
    wobble = 1 - wobble;
    observer_->movePointer(x + byX + wobble, y + byY);
    const auto now = frame(window);
    return std::abs(now.x - before.x - byX) <= 1 + std::abs(byX) / 2 && now != before;
  });
  observer_->release(1);
}

void Desktop::drag(int fromX, int fromY, int toX, int toY) {
  dragAndHold(fromX, fromY, toX, toY);
  observer_->release(1);
}

void Desktop::dragAndHold(int fromX, int fromY, int toX, int toY) {
  constexpr int steps = 8;
  observer_->movePointer(fromX, fromY);
  observer_->press(1);
  for (int step = 1; step <= steps; ++step) {
    observer_->movePointer(fromX + (toX - fromX) * step / steps, fromY + (toY - fromY) * step / steps);
  }
}

int Desktop::keysReceived(Window window, std::uint32_t keysym) {
  std::istringstream keys(observer_->text(window.id, "E2E_KEYS"));
  std::ostringstream wanted;
  wanted << std::hex << keysym << '+';
  int count = 0;
  for (std::string key; keys >> key;)
    if (key.starts_with(wanted.str())) ++count;
  return count;
}

void Desktop::waitUntilReceived(Window window, std::uint32_t keysym, int count) {
  observer_->waitUntil("the application has the key", [&] { return keysReceived(window, keysym) == count; });
}

}  // namespace pellar::e2e
