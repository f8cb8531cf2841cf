#include "app/tracking/WindowTracker.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>

#include "app/tracking/AX.h"
#include "core/Log.h"
#include "core/OfficeApp.h"
#include "core/QuotedList.h"
#include "core/Weakly.h"

namespace pellar {

using namespace std::chrono_literals;

namespace {

// What a refresh reads of each window. The last one is read of other than Office windows only.
constexpr std::array<std::string_view, 7> windowAttributes{
    "AXSubrole", "AXTitle", "AXPosition", "AXSize", "AXMinimized", "AXFullScreen", "AXDocument"};

// A launching application listens within seconds; a busy one may take longer, and each try waits for it.
const std::vector<std::chrono::milliseconds> registeringMarks{500ms, 2s, 8s};
const std::vector<std::chrono::milliseconds> answeringMarks{1s, 5s, 20s};

constexpr double smallestTabbedWidth = 200;  // points
constexpr int setFrameAttempts = 8;
constexpr double setFrameTolerance = 2.0;  // points

TrackedApp trackedAppOf(const RunningApplication& application) {
  if (const auto office = officeAppWithBundleID(*application.bundleId)) return TrackedApp::of(*office);
  return {*application.bundleId, application.localizedName.value_or(*application.bundleId), std::nullopt};
}

}  // namespace

// The reading of one picture. A read may run a nested loop that delivers another request; the picture being
// read is finished first.
class WindowTracker::Reading {
 public:
  explicit Reading(WindowTracker& tracker) : tracker_(tracker) { tracker_.reading_ = this; }
  ~Reading() {
    tracker_.reading_ = nullptr;
    if (askedAgain) tracker_.scheduleRefresh();
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  bool askedAgain = false;

 private:
  WindowTracker& tracker_;
};

std::shared_ptr<WindowTracker> WindowTracker::create(Accessibility& accessibility, Workspace& workspace,
                                                     MainLoop& mainLoop) {
  return std::shared_ptr<WindowTracker>(new WindowTracker(accessibility, workspace, mainLoop));
}

WindowTracker::WindowTracker(Accessibility& accessibility, Workspace& workspace, MainLoop& mainLoop)
    : accessibility_(accessibility),
      workspace_(workspace),
      mainLoop_(mainLoop),
      registering_(mainLoop, registeringMarks, [this] { refresh(); }),
      answering_(mainLoop, answeringMarks, [this] { refresh(); }) {}

void WindowTracker::start() {
  const auto weakly = [this](auto action) { return pellar::weakly(weak_from_this(), action); };
  activated_ = workspace_.onActivated(weakly([](WindowTracker& self) { self.refresh(); }));
  launched_ = workspace_.onLaunched(weakly([](WindowTracker& self, ProcessId pid) {
    const auto front = self.workspace_.frontmostApplication();
    if (front && front->pid == pid && !self.observers_.contains(pid)) self.refresh();
  }));
  spaceChanged_ =
      workspace_.onActiveSpaceChanged(weakly([](WindowTracker& self) { self.scheduleRefresh(); }));
  terminated_ = workspace_.onTerminated(weakly([](WindowTracker& self, std::optional<ProcessId> pid) {
    if (pid) self.observers_.erase(*pid);
    self.refresh();
  }));
  refresh();
}

void WindowTracker::refresh() {
  if (reading_ != nullptr) {
    reading_->askedAgain = true;
    return;
  }
  const auto self = shared_from_this();

  const auto application = trackableApplication();
  auto app = application ? std::optional(trackedAppOf(*application)) : std::nullopt;
  if (app && isEnabled(*app)) {
    readPicture(std::move(*app), application->pid);
  } else {
    storeNothing();
  }
  report();
}

void WindowTracker::readPicture(TrackedApp app, ProcessId pid) {
  const Reading reading(*this);
  if (app_ != app || pid_ != pid) leaveApplication();
  const Element appElement = accessibility_.applicationElement(pid);
  const bool observed = ensureObserver(pid, appElement);
  const auto unanswered = accessibility_.unansweredReads();
  auto listed = readWindows(appElement, app, pid);
  // Without windows an application that does not answer is spared a second wait.
  const auto focused = !listed || listed->kept.empty()
                           ? std::nullopt
                           : AX::value<Element>(accessibility_, appElement, "AXFocusedWindow");
  const auto vanished = listed ? gone(*listed) : WindowList{};
  tried(observed, accessibility_.unansweredReads() == unanswered);
  // After the last read: a tab that the user moves meanwhile stays moved.
  for (const auto& window : vanished) order_.forget(window);
  WindowList windows = listed ? order_.arrange(std::move(listed->kept)) : WindowList{};
  auto front = frontOf(windows, focused);
  pid_ = pid;
  app_ = std::move(app);
  windows_ = std::move(windows);
  front_ = std::move(front);
}

// An application that has just become able to listen or to answer announces nothing. One that does not listen
// yet is tried for that, and answers with it.
void WindowTracker::tried(bool observed, bool answered) {
  observed ? registering_.end() : registering_.refused();
  observed && !answered ? answering_.refused() : answering_.end();
}

// The frontmost application when its windows may have tabs; its bundle identifier is then present.
std::optional<RunningApplication> WindowTracker::trackableApplication() const {
  auto application = workspace_.frontmostApplication();
  if (!application || !application->bundleId) return std::nullopt;
  if (isThisProgram(*application, workspace_)) return std::nullopt;
  if (application->policy != ActivationPolicy::regular) return std::nullopt;
  return application;
}

std::optional<WindowTracker::Listed> WindowTracker::readWindows(const Element& appElement,
                                                                const TrackedApp& app, ProcessId pid) {
  const auto elements = AX::value<std::vector<Element>>(accessibility_, appElement, "AXWindows");
  if (!elements) return std::nullopt;
  if (const auto observer = observers_.find(pid); observer != observers_.end())
    observer->second->follow(*elements);

  const std::span<const std::string_view> attributes(windowAttributes);
  accessibility_.willRead(*elements, app.office ? attributes.first(attributes.size() - 1) : attributes);

  std::unordered_map<Element, std::shared_ptr<OfficeWindow>, ElementHash> known;
  known.reserve(order_.windows().size());
  for (const auto& window : order_.windows()) known.emplace(window->element, window);

  Listed listed;
  listed.kept.reserve(elements->size());
  std::unordered_set<WindowId> taken;
  taken.reserve(elements->size());
  for (const auto& element : *elements) {
    const WindowId id = element.hash();
    if (taken.contains(id)) continue;
    const auto found = known.find(element);
    const bool isNew = found == known.end();
    if (AX::value<std::string>(accessibility_, element, "AXSubrole") != "AXStandardWindow") {
      if (!isNew) listed.passedOver.push_back(found->second);
      continue;
    }
    auto window = isNew ? std::make_shared<OfficeWindow>(accessibility_, element, app, pid) : found->second;
    // A new record has just been read.
    isNew ? window->readPath(accessibility_) : window->refresh(accessibility_);
    if (!(window->frame.width >= smallestTabbedWidth)) {
      listed.passedOver.push_back(std::move(window));
      continue;
    }
    taken.insert(id);
    listed.kept.push_back(std::move(window));
  }
  return listed;
}

// One that is named and gets no tab has lost its place. One that is not named is on another space, unless its
// own element says nothing any more; an application that is busy is not asked about its next window.
WindowList WindowTracker::gone(const Listed& listed) {
  if (order_.windows().empty()) return {};
  std::vector<const OfficeWindow*> named;
  named.reserve(listed.kept.size() + listed.passedOver.size());
  for (const auto* windows : {&listed.kept, &listed.passedOver})
    for (const auto& window : *windows) named.push_back(window.get());
  std::ranges::sort(named);

  WindowList gone = listed.passedOver;
  const auto unanswered = accessibility_.unansweredReads();
  for (const auto& window : windows_) {
    if (std::ranges::binary_search(named, window.get())) continue;
    const bool lives = AX::value<std::string>(accessibility_, window->element, "AXSubrole").has_value();
    if (accessibility_.unansweredReads() != unanswered) break;
    if (!lives) gone.push_back(window);
  }
  return gone;
}

std::shared_ptr<OfficeWindow> WindowTracker::frontOf(const WindowList& windows,
                                                     const std::optional<Element>& focused) {
  if (focused) {
    const auto match =
        std::ranges::find_if(windows, [&](const auto& window) { return window->element == *focused; });
    if (match != windows.end()) return *match;
  }
  const auto shown = std::ranges::find_if(windows, [](const auto& window) { return !window->minimized; });
  return shown == windows.end() ? nullptr : *shown;
}

bool WindowTracker::ensureObserver(ProcessId pid, const Element& appElement) {
  if (observers_.contains(pid)) return true;
  auto observer = ObservedApplication::observe(
      accessibility_, pid, appElement,
      weakly(weak_from_this(), [](WindowTracker& self) { self.scheduleRefresh(); }));
  if (!observer) {
    Log::write("AXObserverCreate failed for pid " + std::to_string(pid));
    return false;
  }
  observers_.emplace(pid, std::move(observer));
  return true;
}

void WindowTracker::storeNothing() {
  app_.reset();
  windows_.clear();
  front_.reset();
  leaveApplication();
}

// Another application is tracked from now on, or none.
void WindowTracker::leaveApplication() {
  order_.forgetAll();
  registering_.end();
  answering_.end();
}

void WindowTracker::report() {
  const auto receiver = delegate.lock();
  if (!receiver) return;
  // Copies, because the receiver may have the picture change while it looks at it.
  const auto app = app_;
  const auto windows = windows_;
  const auto front = front_;
  receiver->tracker(*this, app, windows, front);
}

void WindowTracker::scheduleRefresh() {
  if (pendingRefresh_) return;
  pendingRefresh_ = true;
  mainLoop_.post(weakly(weak_from_this(), [](WindowTracker& self) {
    self.pendingRefresh_ = false;
    self.refresh();
  }));
}

void WindowTracker::move(WindowId id, int index) {
  const auto found = std::ranges::find_if(windows_, [&](const auto& window) { return window->id() == id; });
  if (found == windows_.end()) return;
  const auto window = *found;
  WindowList others = windows_;
  std::erase(others, window);
  const auto place = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(others));
  windows_ = order_.move(window, others, place);

  std::vector<std::string> titles;
  titles.reserve(windows_.size());
  for (const auto& each : windows_) titles.push_back(each->title);
  Log::write("tabs reordered: " + quotedList(titles));
  report();
}

void WindowTracker::setFrame(OfficeWindow& window, const AxRect& rect) {
  std::optional<AxRect> previous;
  for (int attempt = 0; attempt < setFrameAttempts; ++attempt) {
    AX::writeFrame(accessibility_, window.element, rect);
    const AxRect result = AX::frame(accessibility_, window.element).value_or(rect);
    if (result.isNear(rect, setFrameTolerance)) break;
    if (previous == result) break;  // it refuses the rest
    previous = result;
  }
  window.frame = AX::frame(accessibility_, window.element).value_or(rect);
}

}  // namespace pellar
