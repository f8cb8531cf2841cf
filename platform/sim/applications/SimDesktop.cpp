#include "platform/sim/applications/SimDesktop.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace pellar {

SimDesktop::SimDesktop(SimMainLoop& loop) : loop_(loop) {}

SimApplicationPointer SimDesktop::launch(std::optional<std::string> bundleId, std::optional<std::string> name,
                                         ActivationPolicy policy) {
  auto application = std::make_shared<SimApplicationState>();
  application->description = {nextPid_++, std::move(bundleId), std::move(name), policy};
  frontToBack_.push_back(application);
  ++revision_;
  return application;
}

void SimDesktop::finishLaunching(SimApplicationState& application) {
  if (application.running) launched_.post(loop_, application.description.pid);
}

void SimDesktop::terminate(SimApplicationState& application) {
  if (!application.running) return;
  const auto held = this->application(application.description.pid);
  const bool wasFront = frontApplication() == held;
  application.running = false;
  for (const auto& window : application.byCreation) window->exists = window->listed = false;
  application.frontToBack.clear();
  application.byCreation.clear();
  application.focused.reset();
  application.madeMain.reset();
  std::erase(frontToBack_, held);
  waitingWork_.erase(application.description.pid);
  ++revision_;
  terminated_.post(loop_, application.description.pid);
  if (wasFront) bringNextToFront();
}

void SimDesktop::bringNextToFront() {
  const auto next = std::find_if(frontToBack_.begin(), frontToBack_.end(), [](const auto& application) {
    return application->description.policy == ActivationPolicy::regular && !application->hidden;
  });
  front_ = Front::nobody;
  if (next != frontToBack_.end()) activate((*next)->description.pid);
}

void SimDesktop::activate(ProcessId pid) {
  const auto found = application(pid);
  if (!found || (front_ == Front::application && frontToBack_.front() == found)) return;
  std::erase(frontToBack_, found);
  frontToBack_.insert(frontToBack_.begin(), found);
  front_ = Front::application;
  ++revision_;
  if (found->hidden) setHidden(*found, false);
  activated_.post(loop_);
}

void SimDesktop::activatePellar() {
  pellarHidden_ = false;
  if (front_ == Front::pellar) return;
  front_ = Front::pellar;
  ++revision_;
  activated_.post(loop_);
}

void SimDesktop::leaveNobodyInFront() {
  if (front_ == Front::nobody) return;
  front_ = Front::nobody;
  ++revision_;
  activated_.post(loop_);
}

void SimDesktop::setHidden(SimApplicationState& application, bool hidden) {
  if (application.hidden == hidden) return;
  application.hidden = hidden;
  notify(application, 0, hidden ? "AXApplicationHidden" : "AXApplicationShown");
  const auto front = frontApplication();
  if (hidden && front && front.get() == &application) bringNextToFront();
}

void SimDesktop::hideOthers(const SimApplicationState& application) {
  pellarHidden_ = true;
  const auto all = frontToBack_;
  for (const auto& other : all)
    if (other.get() != &application) setHidden(*other, true);
}

void SimDesktop::setHung(SimApplicationState& application, bool hung) {
  application.quirks.hung = hung;
  ++revision_;
  if (hung) return;
  const ProcessId pid = application.description.pid;
  for (const auto& held : heldBack_) {
    if (held.pid == pid) loop_.postInDefaultMode(notifications_.later(held));
  }
  std::erase_if(heldBack_, [pid](const auto& held) { return held.pid == pid; });
  const auto work = waitingWork_.extract(pid);
  if (work.empty()) return;
  for (const auto& each : work.mapped()) loop_.post(each);
}

void SimDesktop::whenResumed(const SimApplicationState& application, std::function<void()> work) {
  waitingWork_[application.description.pid].push_back(std::move(work));
}

void SimDesktop::setMenuBar(SimApplicationState& application, const std::vector<SimMenuTitle>& titles) {
  if (application.menuBar) dismantle(*application.menuBar);
  application.menuBar =
      titles.empty() ? nullptr : makeSimMenuBar(application.description.pid, titles, nextSerial_);
  ++revision_;
}

SimWindowPointer SimDesktop::open(SimApplicationState& application, std::string title, const AxRect& frame,
                                  std::string subrole) {
  auto window = std::make_shared<SimWindowState>();
  window->serial = nextSerial_++;
  window->pid = application.description.pid;
  window->space = shownSpace_;
  window->title = std::move(title);
  window->frame = frame;
  window->subrole = std::move(subrole);
  application.byCreation.push_back(window);
  application.frontToBack.insert(application.frontToBack.begin(), window);
  notify(*window, "AXWindowCreated");
  setFocused(application, window);
  return window;
}

void SimDesktop::focus(const SimWindowPointer& window) {
  const auto owner = application(window->pid);
  if (!owner || !window->exists || window->minimised) return;
  std::erase(owner->frontToBack, window);
  owner->frontToBack.insert(owner->frontToBack.begin(), window);
  setFocused(*owner, window);
}

void SimDesktop::makeMain(const SimWindowPointer& window) {
  const auto owner = application(window->pid);
  if (!owner || !owner->quirks.mainIsNotKey) return focus(window);
  if (window->exists && !window->minimised) owner->madeMain = window == owner->focused ? nullptr : window;
  ++revision_;
}

void SimDesktop::focusNothing(SimApplicationState& application) {
  setFocused(application, nullptr);
}

void SimDesktop::setFocused(SimApplicationState& application, SimWindowPointer window) {
  ++revision_;
  application.madeMain.reset();
  if (application.focused == window) return;
  application.focused = std::move(window);
  notify(application, application.focused ? application.focused->serial : 0, "AXFocusedWindowChanged");
}

void SimDesktop::focusNext(SimApplicationState& application) {
  const auto next = std::find_if(application.frontToBack.begin(), application.frontToBack.end(),
                                 [this](const auto& window) { return isOnScreen(*window); });
  setFocused(application, next == application.frontToBack.end() ? nullptr : *next);
}

void SimDesktop::setMinimised(const SimWindowPointer& window, bool minimised) {
  const auto owner = application(window->pid);
  if (!owner || !window->exists || window->minimised == minimised) return;
  window->minimised = minimised;
  notify(*window, minimised ? "AXWindowMiniaturized" : "AXWindowDeminiaturized");
  if (!minimised) {
    focus(window);
  } else if (owner->focused == window) {
    focusNext(*owner);
  }
}

void SimDesktop::setFullScreen(const SimWindowPointer& window, bool fullScreen, const AxRect& screen) {
  if (!window->exists || window->fullScreen == fullScreen) return;
  if (fullScreen) window->frameBeforeFullScreen = window->frame;
  window->fullScreen = fullScreen;
  ++revision_;
  setFrame(*window, fullScreen ? screen : window->frameBeforeFullScreen);
}

void SimDesktop::setTitle(SimWindowState& window, std::string title) {
  if (!window.exists || window.title == title) return;
  window.title = std::move(title);
  notify(window, "AXTitleChanged");
}

void SimDesktop::setFrame(SimWindowState& window, const AxRect& frame) {
  if (!window.exists) return;
  const AxRect before = std::exchange(window.frame, frame);
  if (before.origin() != frame.origin()) notify(window, "AXWindowMoved");
  if (before.size() != frame.size()) notify(window, "AXWindowResized");
}

bool SimDesktop::isOnScreen(const SimWindowState& window) const {
  return window.exists && !window.minimised && isNamed(window);
}

bool SimDesktop::isNamed(const SimWindowState& window) const {
  return window.listed && window.space == shownSpace_ && !isBehindNativeTab(window);
}

bool SimDesktop::isBehindNativeTab(const SimWindowState& window) {
  return window.tabGroup && window.tabGroup->selected.lock().get() != &window;
}

void SimDesktop::setSpace(SimWindowState& window, int space) {
  window.space = space;
  ++revision_;
}

// The applications are told nothing (github.com/screenpipe/screenpipe/issues/2074), and one that has no
// window on the space goes on naming the focused window it had.
void SimDesktop::showSpace(int space) {
  if (shownSpace_ == space) return;
  shownSpace_ = space;
  ++revision_;
  spaceChanged_.post(loop_);
  for (const auto& owner : std::vector(frontToBack_)) {
    if (owner->hidden) continue;
    const auto top =
        std::ranges::find_if(owner->frontToBack, [this](const auto& each) { return isOnScreen(*each); });
    if (top == owner->frontToBack.end()) continue;
    // A copy, since the list is put into another order by it.
    const SimWindowPointer window = *top;
    focus(window);
    activate(owner->description.pid);
    return;
  }
}

void SimDesktop::joinAsTabs(const std::vector<SimWindowPointer>& windows) {
  const auto group = std::make_shared<SimTabGroup>();
  for (const auto& each : windows) each->tabGroup = group;
  selectNativeTab(windows.back());
}

void SimDesktop::selectNativeTab(const SimWindowPointer& window) {
  const auto owner = application(window->pid);
  if (!owner || !window->tabGroup) return;
  const auto before = window->tabGroup->selected.lock();
  if (before == window) return;
  window->tabGroup->selected = window;
  if (before) {
    window->frame = before->frame;
    notify(*before, "AXUIElementDestroyed");
  }
  notify(*window, "AXWindowCreated");
  focus(window);
}

void SimDesktop::destroy(const SimWindowPointer& window, bool stillListed) {
  if (!window->exists) return;
  window->exists = false;
  window->listed = stillListed;
  ++revision_;
  if (stillListed) return;
  const auto owner = application(window->pid);
  if (!owner) return;
  std::erase(owner->frontToBack, window);
  std::erase(owner->byCreation, window);
  notify(*window, "AXUIElementDestroyed");
  if (owner->madeMain == window) owner->madeMain.reset();
  if (owner->focused == window) focusNext(*owner);
}

void SimDesktop::later(const SimWindowPointer& window, std::function<void(SimWindowState&)> change) {
  if (window->quirks.frameDelay.count() <= 0) return change(*window);
  loop_.later(window->quirks.frameDelay, [window, change = std::move(change)] { change(*window); });
}

void SimDesktop::requestPosition(const SimWindowPointer& window, AxPoint position) {
  if (!window->exists || window->fullScreen || window->quirks.refusesMoves) return;
  if (const auto& area = window->quirks.confinedTo) {
    position.x = std::clamp(position.x, area->minX(), area->maxX());
    position.y = std::clamp(position.y, area->minY(), area->maxY());
  }
  if (clampToScreens) position = clampToScreens(AxRect::of(position, window->frame.size()));
  later(window, [this, position](SimWindowState& state) {
    setFrame(state, AxRect::of(position, state.frame.size()));
  });
}

void SimDesktop::requestSize(const SimWindowPointer& window, Size size) {
  if (!window->exists || window->fullScreen || window->quirks.refusesSizes) return;
  const SimWindowQuirks& quirks = window->quirks;
  const auto fit = [](double wanted, double minimum, double maximum, double increment) {
    const double clamped = std::clamp(wanted, minimum, std::max(minimum, maximum));
    return increment > 0 ? minimum + std::floor((clamped - minimum) / increment) * increment : clamped;
  };
  const Size fitted{
      fit(size.width, quirks.minimumSize.width, quirks.maximumSize.width, quirks.sizeIncrement.width),
      fit(size.height, quirks.minimumSize.height, quirks.maximumSize.height, quirks.sizeIncrement.height)};
  later(window,
        [this, fitted](SimWindowState& state) { setFrame(state, AxRect::of(state.frame.origin(), fitted)); });
}

SimApplicationPointer SimDesktop::application(ProcessId pid) const {
  const auto found = std::find_if(frontToBack_.begin(), frontToBack_.end(), [pid](const auto& application) {
    return application->description.pid == pid;
  });
  return found == frontToBack_.end() ? nullptr : *found;
}

std::optional<RunningApplication> SimDesktop::frontmost() const {
  if (front_ == Front::pellar) {
    return RunningApplication{pellarPid, pellarBundleId, "Pellar", ActivationPolicy::accessory};
  }
  const auto front = frontApplication();
  if (!front) return std::nullopt;
  return front->description;
}

SimApplicationPointer SimDesktop::frontApplication() const {
  return front_ == Front::application && !frontToBack_.empty() ? frontToBack_.front() : nullptr;
}

SimWindowPointer SimDesktop::windowAt(AxPoint point) const {
  for (const auto& application : frontToBack_) {
    if (application->hidden) continue;
    for (const auto& window : application->frontToBack) {
      if (isOnScreen(*window) && window->frame.contains(point)) return window;
    }
  }
  return nullptr;
}

void SimDesktop::notify(const SimWindowState& window, std::string_view name) {
  if (const auto owner = application(window.pid)) notify(*owner, window.serial, name);
}

void SimDesktop::notify(SimApplicationState& application, std::uint64_t window, std::string_view name) {
  ++revision_;
  if (application.quirks.untoldNotifications.contains(name)) return;
  SimNotification notification{application.description.pid, window, std::string(name)};
  if (application.quirks.hung) {
    heldBack_.push_back(std::move(notification));
  } else {
    loop_.postInDefaultMode(notifications_.later(std::move(notification)));
  }
}

}  // namespace pellar
