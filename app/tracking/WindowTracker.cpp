#include "app/tracking/WindowTracker.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>

#include "app/tracking/AX.h"
#include "core/Log.h"
#include "core/OfficeApp.h"
#include "core/QuotedList.h"

namespace pellar {
namespace {

constexpr std::array<std::string_view, 10> notifications{
    "AXFocusedWindowChanged", "AXWindowCreated",      "AXUIElementDestroyed",   "AXWindowMoved",
    "AXWindowResized",        "AXWindowMiniaturized", "AXWindowDeminiaturized", "AXTitleChanged",
    "AXApplicationHidden",    "AXApplicationShown"};

// What a refresh reads of each window. The last one is read of other than Office windows only.
constexpr std::array<std::string_view, 7> windowAttributes{
    "AXSubrole", "AXTitle", "AXPosition", "AXSize", "AXMinimized", "AXFullScreen", "AXDocument"};

constexpr double smallestTabbedWidth = 200;  // points
constexpr int setFrameAttempts = 8;
constexpr double setFrameTolerance = 2.0;  // points

TrackedApp trackedAppOf(const RunningApplication& application) {
  if (const auto office = officeAppWithBundleID(*application.bundleId)) return TrackedApp::of(*office);
  return {*application.bundleId, application.localizedName.value_or(*application.bundleId), std::nullopt};
}

bool isClose(const AxRect& a, const AxRect& b) {
  const auto near = [](double x, double y) { return std::abs(x - y) < setFrameTolerance; };
  return near(a.width, b.width) && near(a.height, b.height) && near(a.minX(), b.minX()) &&
         near(a.minY(), b.minY());
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
    : accessibility_(accessibility), workspace_(workspace), mainLoop_(mainLoop) {}

void WindowTracker::start() {
  activated_ = workspace_.onActivated([weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->refresh();
  });
  terminated_ = workspace_.onTerminated([weak = weak_from_this()](std::optional<ProcessId> pid) {
    const auto self = weak.lock();
    if (!self) return;
    if (pid) self->observers_.erase(*pid);
    self->refresh();
  });
  refresh();
}

void WindowTracker::refresh() {
  if (reading_ != nullptr) {
    reading_->askedAgain = true;
    return;
  }
  const auto self = shared_from_this();

  const auto application = trackableApplication();
  if (!application) {
    store(std::nullopt, {}, nullptr);
    report();
    return;
  }
  TrackedApp app = trackedAppOf(*application);
  if (!isEnabled(app)) {
    store(std::nullopt, {}, nullptr);
    report();
    return;
  }

  readPicture(std::move(app), application->pid);
  report();
}

void WindowTracker::readPicture(TrackedApp app, ProcessId pid) {
  const Reading reading(*this);
  const Element appElement = accessibility_.applicationElement(pid);
  ensureObserver(pid, appElement);
  WindowList kept = readWindows(appElement, app, pid);
  // Without windows an application that does not answer is spared a second wait.
  const auto focused =
      kept.empty() ? std::nullopt : AX::value<Element>(accessibility_, appElement, "AXFocusedWindow");
  // After the last read: a tab that the user moves meanwhile stays moved.
  WindowList windows = inTabOrder(std::move(kept));
  auto front = frontOf(windows, focused);
  pid_ = pid;
  store(std::move(app), std::move(windows), std::move(front));
}

// The frontmost application when its windows may have tabs; its bundle identifier is then present.
std::optional<RunningApplication> WindowTracker::trackableApplication() const {
  auto application = workspace_.frontmostApplication();
  if (!application || !application->bundleId) return std::nullopt;
  if (application->bundleId == workspace_.ownBundleId()) return std::nullopt;
  if (application->policy != ActivationPolicy::regular) return std::nullopt;
  return application;
}

WindowList WindowTracker::readWindows(const Element& appElement, const TrackedApp& app, ProcessId pid) {
  const auto elements = AX::value<std::vector<Element>>(accessibility_, appElement, "AXWindows");
  if (!elements || elements->empty()) return {};

  const std::span<const std::string_view> attributes(windowAttributes);
  accessibility_.willRead(*elements, app.office ? attributes.first(attributes.size() - 1) : attributes);

  std::unordered_map<WindowId, std::shared_ptr<OfficeWindow>> known;
  known.reserve(windows_.size());
  for (const auto& window : windows_) known.emplace(window->id(), window);

  WindowList kept;
  kept.reserve(elements->size());
  std::unordered_set<WindowId> taken;
  taken.reserve(elements->size());
  for (const auto& element : *elements) {
    const WindowId id = element.hash();
    if (taken.contains(id)) continue;
    if (AX::value<std::string>(accessibility_, element, "AXSubrole") != "AXStandardWindow") continue;
    const auto found = known.find(id);
    // A new window may come under the number of one that is gone.
    const bool reusable = found != known.end() && found->second->element == element;
    auto window =
        reusable ? found->second : std::make_shared<OfficeWindow>(accessibility_, element, app, pid);
    window->refresh(accessibility_);
    if (!(window->frame.width >= smallestTabbedWidth)) continue;
    taken.insert(id);
    kept.push_back(std::move(window));
  }
  return kept;
}

// Windows that had a tab keep their order; new ones follow in the order given.
WindowList WindowTracker::inTabOrder(WindowList kept) const {
  std::unordered_set<const OfficeWindow*> waiting;
  waiting.reserve(kept.size());
  for (const auto& window : kept) waiting.insert(window.get());

  WindowList ordered;
  ordered.reserve(kept.size());
  for (const auto& window : windows_)
    if (waiting.erase(window.get()) > 0) ordered.push_back(window);
  for (auto& window : kept)
    if (waiting.contains(window.get())) ordered.push_back(std::move(window));
  return ordered;
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

void WindowTracker::ensureObserver(ProcessId pid, const Element& appElement) {
  if (observers_.contains(pid)) return;
  auto observer = accessibility_.observe(pid, [weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->scheduleRefresh();
  });
  if (!observer) {
    Log::write("AXObserverCreate failed for pid " + std::to_string(pid));
    return;
  }
  for (const auto notification : notifications) observer->add(appElement, notification);
  observers_.emplace(pid, std::move(observer));
}

void WindowTracker::store(std::optional<TrackedApp> app, WindowList windows,
                          std::shared_ptr<OfficeWindow> front) {
  app_ = std::move(app);
  windows_ = std::move(windows);
  front_ = std::move(front);
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
  mainLoop_.post([weak = weak_from_this()] {
    const auto self = weak.lock();
    if (!self) return;
    self->pendingRefresh_ = false;
    self->refresh();
  });
}

void WindowTracker::move(WindowId id, int index) {
  const auto found = std::ranges::find_if(windows_, [&](const auto& window) { return window->id() == id; });
  if (found == windows_.end()) return;
  auto window = *found;
  windows_.erase(found);
  const auto place = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(windows_));
  windows_.insert(windows_.begin() + place, std::move(window));

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
    if (isClose(result, rect)) break;
    if (previous == result) break;  // it refuses the rest
    previous = result;
  }
  window.frame = AX::frame(accessibility_, window.element).value_or(rect);
}

}  // namespace pellar
