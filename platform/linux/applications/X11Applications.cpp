#include "platform/linux/applications/X11Applications.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

#include "core/Ascii.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// How long no window may be active before that is taken for the truth. Window managers name no active window
// between two focus changes; when the last one is gone or minimised they are done sooner.
constexpr auto switchTime = 150ms;
constexpr auto switchTimeAfterLoss = 40ms;

constexpr std::chrono::nanoseconds raiseTime = 500ms;

// Terminals that come without a desktop entry, by the class of their windows.
bool isTerminalWithoutEntry(std::string_view windowClass) {
  constexpr std::array<std::string_view, 6> classes{"xterm", "uxterm", "urxvt", "rxvt", "st", "st-256color"};
  return std::ranges::find(classes, Ascii::lowered(windowClass)) != classes.end();
}

// What Tk calls the windows whose program gave them no class. Any number of programs have such.
bool isToolkitsClass(std::string_view windowClass) {
  return windowClass == "Toplevel" || windowClass == "Tk";
}

// Above every number that the kernel gives to a process.
constexpr ProcessId firstMadeUpPid = 1 << 30;

const std::string ownKey = "\nself";

std::string localHostName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
}

std::optional<std::string> firstOf(std::initializer_list<std::string_view> texts) {
  for (const std::string_view text : texts) {
    if (!text.empty()) return std::string(text);
  }
  return std::nullopt;
}

}  // namespace

X11Applications::X11Applications(X11Mirror& mirror, MainLoop& loop, DesktopEntries entries)
    : mirror_(mirror),
      dialogs_(mirror),
      loop_(loop),
      entries_(std::move(entries)),
      hostName_(localHostName()),
      lastMadeUpPid_(firstMadeUpPid) {
  update();
}

const X11Application* X11Applications::withPid(ProcessId pid) const {
  for (const auto& [key, application] : applications_) {
    if (application.pid == pid) return &application;
  }
  for (const auto& [id, window] : mirror_.windows()) {
    if (window.pid == pid && pid != 0) return ofWindow(id);
  }
  return nullptr;
}

const X11Application* X11Applications::withBundleId(const std::string& bundleId) const {
  for (const auto& [key, application] : applications_)
    if (application.bundleId == bundleId) return &application;
  return nullptr;
}

const X11Application* X11Applications::ofWindow(xcb_window_t window) const {
  const auto key = keys_.find(window);
  if (key == keys_.end()) return nullptr;
  const auto found = applications_.find(key->second);
  return found == applications_.end() ? nullptr : &found->second;
}

xcb_window_t X11Applications::focusedWindow(const X11Application& application) const {
  const X11Window* active = mirror_.find(active_);
  if (active == nullptr || ofWindow(active_) != &application) return XCB_WINDOW_NONE;
  const X11Window* standard = dialogs_.standardWindowOf(*active, application.windows);
  if (standard != nullptr) return standard->id;
  const xcb_window_t served =
      active->isTool() ? lastActive(application, Among::standardOnes) : xcb_window_t{XCB_WINDOW_NONE};
  return served == XCB_WINDOW_NONE ? active->id : served;
}

std::optional<RunningApplication> X11Applications::frontmost() const {
  if (active_ == XCB_WINDOW_NONE) return std::nullopt;
  const auto found = applications_.find(activeKey_);
  if (found == applications_.end()) {
    // A question of our own that was just answered.
    if (activeKey_ == ownKey)
      return RunningApplication{getpid(), ownBundleId, "Pellar", ActivationPolicy::regular};
    return std::nullopt;
  }
  const X11Application& application = found->second;
  const X11Window* window = mirror_.find(active_);
  const bool furniture = window != nullptr && window->kind == X11WindowKind::furniture;
  return RunningApplication{application.pid, application.bundleId, application.name,
                            furniture ? ActivationPolicy::accessory : ActivationPolicy::regular};
}

xcb_window_t X11Applications::lastActiveWindow(const X11Application& application) const {
  return lastActive(application, Among::all);
}

xcb_window_t X11Applications::lastActive(const X11Application& application, Among among) const {
  xcb_window_t best = XCB_WINDOW_NONE;
  std::pair<bool, std::uint64_t> latest;  // whether it is here, and its activation
  for (const xcb_window_t id : application.windows) {
    const X11Window* window = mirror_.find(id);
    if (window == nullptr || mirror_.isMinimized(*window) || window->kind == X11WindowKind::furniture)
      continue;
    if (among == Among::standardOnes && !window->standard()) continue;
    const auto found = activations_.find(id);
    const std::pair activation{mirror_.isOnShownDesktop(*window),
                               found == activations_.end() ? std::uint64_t{0} : found->second};
    if (best != XCB_WINDOW_NONE && activation <= latest) continue;
    best = id;
    latest = activation;
  }
  return best;
}

void X11Applications::noteRaise(xcb_window_t window) {
  raising_ = window;
  raisedAt_ = loop_.uptime();
}

bool X11Applications::isRaising(const X11Application& application) const {
  return raising_ != XCB_WINDOW_NONE && ofWindow(raising_) == &application &&
         loop_.uptime() - raisedAt_ < raiseTime;
}

bool X11Applications::isLocal(const X11Window& window) const {
  return !window.clientMachine || window.clientMachine->empty() || *window.clientMachine == hostName_;
}

X11Applications::Key X11Applications::keyOf(const X11Window& window) const {
  const bool local = isLocal(window);
  if (local && window.pid == getpid()) return ownKey;
  const std::string& machine = local ? hostName_ : *window.clientMachine;
  // Such a window may tell no process, either.
  if (isToolkitsClass(window.className))
    return "maker\n" + std::to_string(mirror_.makerOf(window.id)) + "\n" + machine;
  const auto windowClass = firstOf({window.className, window.instanceName});
  if (windowClass) return "class\n" + *windowClass + "\n" + machine;
  if (window.pid) return "process\n" + std::to_string(*window.pid) + "\n" + machine;
  return "window\n" + std::to_string(window.id);
}

ProcessId X11Applications::unusedPid(const X11Window& window) {
  const auto isUsed = [this](ProcessId pid) {
    return std::any_of(applications_.begin(), applications_.end(),
                       [pid](const auto& entry) { return entry.second.pid == pid; });
  };
  if (isLocal(window) && window.pid && !isUsed(*window.pid)) return *window.pid;
  do {
    lastMadeUpPid_ =
        lastMadeUpPid_ < firstMadeUpPid + (firstMadeUpPid - 2) ? lastMadeUpPid_ + 1 : firstMadeUpPid;
  } while (isUsed(lastMadeUpPid_));
  return lastMadeUpPid_;
}

void X11Applications::describe(X11Application& application, const X11Window& window) {
  if (keyOf(window) == ownKey) {
    application.bundleId = ownBundleId;
    application.name = "Pellar";
    return;
  }
  auto entry = entries_.forWindowClass(window.className);
  if (!entry) entry = entries_.forWindowClass(window.instanceName);
  const auto windowClass = firstOf({window.className, window.instanceName});
  application.isTerminal = entry ? entry->isTerminal : isTerminalWithoutEntry(windowClass.value_or(""));
  if (entry) {
    application.bundleId = entry->id;
    application.name = firstOf({entry->name, windowClass.value_or(entry->id)});
  } else if (windowClass) {
    application.bundleId = Ascii::lowered(*windowClass);
    application.name = windowClass;
  } else if (window.pid) {
    std::array<char, 4096> path{};
    const std::string link = "/proc/" + std::to_string(*window.pid) + "/exe";
    const auto length = readlink(link.c_str(), path.data(), path.size());
    if (length <= 0) return;
    const std::string_view program(path.data(), static_cast<std::size_t>(length));
    application.name = std::string(program.substr(program.rfind('/') + 1));
    application.bundleId = Ascii::lowered(*application.name);
  }
}

std::map<std::uint32_t, const X11Window*> X11Applications::namedWindows() const {
  std::map<std::uint32_t, const X11Window*> named;
  const auto& all = mirror_.windows();
  if (std::ranges::none_of(all, [](const auto& entry) { return isToolkitsClass(entry.second.className); }))
    return named;
  for (const auto& [id, window] : all) {
    if (window.standard() && !window.className.empty() && !isToolkitsClass(window.className))
      named.emplace(mirror_.makerOf(id), &window);
  }
  return named;
}

void X11Applications::regroup() {
  const auto named = namedWindows();
  keys_.clear();
  for (auto& [key, application] : applications_) application.windows.clear();
  std::set<Key> present;
  const auto place = [&](const X11Window& window, bool listed) {
    // The window that a dialog was opened for says whose it is: a dialog may bear another class than the
    // windows of its application, or come from another process (a desktop's file chooser).
    const X11Window* leader = &dialogs_.leaderOf(window);
    if (isToolkitsClass(leader->className)) {
      const auto main = named.find(mirror_.makerOf(leader->id));
      if (main != named.end()) leader = main->second;
    }
    const Key key = keyOf(*leader);
    keys_[window.id] = key;
    present.insert(key);
    auto found = applications_.find(key);
    if (found == applications_.end()) {
      X11Application fresh;
      fresh.pid = unusedPid(*leader);
      describe(fresh, *leader);
      launched_.insert(fresh.pid);
      found = applications_.emplace(key, std::move(fresh)).first;
    }
    if (listed) found->second.windows.push_back(window.id);
  };
  for (const xcb_window_t id : mirror_.clientList()) place(*mirror_.find(id), true);
  for (const auto& [id, window] : mirror_.windows()) {
    if (!keys_.contains(id)) place(window, false);
  }
  for (auto it = applications_.begin(); it != applications_.end();) {
    if (present.contains(it->first)) {
      ++it;
      continue;
    }
    launched_.erase(it->second.pid);
    terminated_.insert(it->second.pid);
    it = applications_.erase(it);
  }
  std::erase_if(activations_, [this](const auto& entry) { return mirror_.find(entry.first) == nullptr; });
}

bool X11Applications::isElsewhere(xcb_window_t window) const {
  const X11Window* found = mirror_.find(window);
  return found != nullptr && !mirror_.isOnShownDesktop(*found);
}

void X11Applications::setActive(xcb_window_t window) {
  const auto key = keys_.find(window);
  const Key& now = key == keys_.end() ? Key() : key->second;
  if (window == active_ && now == activeKey_) return;
  const auto note = [this] {
    const auto found = applications_.find(activeKey_);
    if (found != applications_.end()) changed_.insert(found->second.pid);
  };
  note();
  active_ = window;
  activeKey_ = now;
  note();
  raising_ = XCB_WINDOW_NONE;
  if (window != XCB_WINDOW_NONE) activations_[window] = ++lastActivation_;
}

void X11Applications::update() {
  const X11Mirror::Changes changes = mirror_.takeChanges();
  const auto noteOwners = [this, &changes] {
    for (const xcb_window_t id : changes.windows) {
      if (const X11Application* owner = ofWindow(id)) changed_.insert(owner->pid);
    }
  };
  // Before and after: a window may have changed hands or be gone.
  noteOwners();
  if (changes.membership) {
    regroup();
    noteOwners();
  }
  // A window that is gone may be called the active one for a moment longer.
  const X11Window* named = mirror_.find(mirror_.activeWindow());
  const xcb_window_t active = named == nullptr ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : named->id;
  if (active != XCB_WINDOW_NONE) {
    switching_ = false;
    switchTimer_.cancel();
    setActive(active);
  } else if (active_ != XCB_WINDOW_NONE && !switching_ && !isElsewhere(active_) &&
             !mirror_.isBetweenWindowManagers()) {
    switching_ = true;
    const X11Window* last = mirror_.find(active_);
    // When a question of our own has been answered, the application before it is asked to come back.
    // A window that is merely iconic may be on its way to another desktop.
    const bool lost = (last == nullptr || last->hidden) && activeKey_ != ownKey;
    switchTimer_ = loop_.after(lost ? switchTimeAfterLoss : switchTime, [this] {
      switching_ = false;
      if (!isElsewhere(active_)) setActive(XCB_WINDOW_NONE);
      tell();
    });
  }
  if (onChanges) onChanges(changes);
  desktopChanged_ = desktopChanged_ || changes.desktop;
  screensChanged_ = screensChanged_ || changes.screens;
  // Between two focus changes the observers are not told, so that the strip does not jump to a window that
  // the user did not choose.
  if (!switching_) tell();
}

void X11Applications::tell() {
  for (const ProcessId pid : std::exchange(terminated_, {})) {
    if (onTerminated) onTerminated(pid);
  }
  for (const ProcessId pid : std::exchange(launched_, {})) {
    if (onLaunched) onLaunched(pid);
  }
  if (std::exchange(desktopChanged_, false) && onDesktopChanged) onDesktopChanged();
  if (std::exchange(screensChanged_, false) && onScreensChanged) onScreensChanged();
  auto front = frontmost();
  const bool changed = front != toldFrontmost_;
  toldFrontmost_ = std::move(front);
  if (changed && onFrontmostChanged) onFrontmostChanged();
  const auto pids = std::exchange(changed_, {});
  if (!pids.empty() && onWindowsChanged) onWindowsChanged(pids);
}

}  // namespace pellar
