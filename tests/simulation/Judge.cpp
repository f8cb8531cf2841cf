#include "tests/simulation/Judge.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>
#include <utility>

#include "tests/simulation/PanelSizes.h"

namespace pellar {
namespace {

constexpr double tolerance = 0.5;
std::string text(const ScreenRect& rect) {
  std::ostringstream out;
  out << "(" << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ")";
  return out.str();
}

bool isHiding(const SimWindow& front) {
  return front.isMinimised() || front.isFullScreen() || !(front.frame().width > 0);
}

bool answers(const SimApplication& application) {
  return !application.quirks().hung && application.quirks().refuses == SimRefusal::nothing;
}

std::optional<std::string> nameOf(const std::optional<Color>& color) {
  if (!color) return std::nullopt;
  for (const auto& [system, name] : {std::pair{SystemColor::red, "red"},
                                     {SystemColor::orange, "orange"},
                                     {SystemColor::yellow, "yellow"},
                                     {SystemColor::green, "green"},
                                     {SystemColor::blue, "blue"},
                                     {SystemColor::purple, "purple"}})
    if (*color == Color::of(system)) return name;
  return "a colour that is none of the six";
}

}  // namespace

Judge::Judge(SimMac& mac, const std::vector<SimApplication>& applications)
    : mac_(mac),
      applications_(applications),
      state_(mac.home() / "Library" / "Application Support" / "Pellar" / "state.json"),
      documents_(mac.home(), mac.home() / "Library" / "Application Support" / "Pellar"),
      log_(mac.platform().folders.logFile, updates_),
      activated_(mac.workspace().onActivated([this] {
        const auto* front = inFront();
        if (front != nullptr) frames_.wasInFront(front->windowsFrontToBack());
        // It may have been another one in between.
        if (front != nullptr && front->pid() == places_.pid()) return draggedSomewhere();
        places_.forget();
      })),
      resized_(mac.applicationNotifications().add([this](const SimNotification&) { places_.noteNarrow(); })) {
}

const SimApplication* Judge::inFront() const {
  const auto front = mac_.workspace().frontmostApplication();
  if (!front) return nullptr;
  const auto found = std::ranges::find(applications_, front->pid, &SimApplication::pid);
  return found == applications_.end() ? nullptr : &*found;
}

void Judge::leftInDoubt(ProcessId pid) {
  inDoubt_.insert(pid);
  if (asked_ == pid) asked_ = 0;
}

void Judge::lied(ProcessId pid) {
  leftInDoubt(pid);
  draggedSomewhere();
  state_.uncertain();
  frames_.becomeUnsure();
}

std::optional<SimWindow> Judge::onlyWindowWith(const std::string& label) const {
  const auto* application = inFront();
  std::optional<SimWindow> only;
  if (application == nullptr || label.empty()) return only;
  for (const auto& each : application->windowsFrontToBack()) {
    if (!names_.labelsOf(each).contains(label)) continue;
    if (only) return std::nullopt;
    only = each;
  }
  return only;
}

bool Judge::frontAnswers() const {
  const auto* application = inFront();
  return application != nullptr && answers(*application);
}

std::optional<SimWindow> Judge::front() const {
  if (!fronts_ || fronts_->size() != 1 || !mac_.strip().visible() || !frontAnswers()) return std::nullopt;
  return fronts_->front();
}

bool Judge::isFrontInDoubt() const {
  const auto* application = inFront();
  return application != nullptr && answers(*application) && inDoubt_.contains(application->pid());
}

void Judge::looksAgain() {
  const auto* application = inFront();
  if (application == nullptr || !answers(*application)) return;
  asked_ = application->pid();
  if (inDoubt_.erase(asked_) > 0) draggedSomewhere();
}

bool Judge::isInDoubt(const SimApplication& application) {
  if (!answers(application)) {
    leftInDoubt(application.pid());
    log_.mayRefuse(application.pid());
  }
  if (asked_ == application.pid()) return false;
  return inDoubt_.contains(application.pid()) || !application.quirks().untoldNotifications.empty();
}

std::string Judge::described() const {
  std::ostringstream out;
  const auto* application = inFront();
  if (application == nullptr) return "nobody is in front";
  const auto focused = application->focusedWindow();
  out << "in front: process " << application->pid() << ", focused [" << (focused ? focused->title() : "none")
      << "], windows";
  for (const auto& each : application->windowsFrontToBack()) {
    const AxRect at = each.frame();
    out << " [" << each.title() << (each.isNamed() ? "" : ", not named")
        << (each.isMinimised() ? ", minimised" : "") << (each.isFullScreen() ? ", full screen" : "") << ", "
        << at.x << " " << at.y << " " << at.width << " " << at.height << "]";
  }
  out << "; " << places_.described();
  const auto strip = mac_.strip();
  if (!strip.visible()) return out.str() + "; the strip is hidden";
  const auto active = strip.activeTabIndex();
  return out.str() + "; strip at " + text(strip.frame()) + TabPlaces::text(strip.tabs()) + ", active " +
         (active ? std::to_string(*active) : "none");
}

void Judge::atRest() {
  for (const auto& application : applications_) {
    if (answers(application)) continue;
    leftInDoubt(application.pid());
    log_.mayRefuse(application.pid());
  }
  names_.lookAround();
  if (const auto wrong = log_.compare()) found("a line in the log: " + *wrong);
  log_.dragsAreOver();
  if (const auto wrong = state_.compare()) found(*wrong);
  if (const auto wrong = updates_.compare(mac_.notifications().shown())) found(*wrong);
  if (const auto wrong = panels_.compare()) found(*wrong);
  fronts_.reset();
  judgeStrip();
  judgeFrames();
  asked_ = 0;
}

void Judge::judgeFrames() {
  const auto* application = inFront();
  Windows fronts = fronts_.value_or(application == nullptr ? Windows() : application->windowsFrontToBack());
  if (const auto wrong = frames_.compare(applications_, fronts)) found(*wrong);
}

void Judge::judgeStrip() {
  const auto front = mac_.workspace().frontmostApplication();
  // While the user works with the program itself its strip stays as it was.
  if (front && front->bundleId == mac_.workspace().ownBundleId()) return places_.forget();
  const SimApplication* application = inFront();
  // What the last one in front does not tell is not known to be over.
  if (application != nullptr) lastInFront_ = application->pid();
  if (application == nullptr &&
      (inDoubt_.contains(lastInFront_) ||
       std::ranges::any_of(applications_, [](const auto& each) { return !answers(each); })))
    return places_.forget();
  if (application == nullptr || !state_.follows(*front->bundleId)) {
    judgeHidden(application == nullptr ? "nobody is in front" : "the application is not followed");
    places_.forget();
    return places_.endWithout();
  }
  places_.begin(*application);
  if (isInDoubt(*application)) {
    ++count_.partly;
    return places_.pass(*application);
  }
  judgeTabs(*application, asked_ == application->pid());
  places_.end();
}

void Judge::judgeHidden(const std::string& why) {
  ++count_.hidden;
  if (mac_.strip().visible()) found("the strip is shown though " + why);
}

void Judge::judgeTabs(const SimApplication& application, bool asked) {
  const Windows tabbed = places_.expect(application);
  // The focused window is in front; without a tab of it the first that is not minimised.
  Windows fronts;
  const auto focused = application.focusedWindow();
  if (focused && TabPlaces::contains(tabbed, *focused)) {
    fronts = {*focused};
  } else {
    std::ranges::copy_if(tabbed, std::back_inserter(fronts),
                         [](const auto& each) { return !each.isMinimised(); });
    // A drop of a tab does not bring another window to the front.
    if (asked && places_.isKnown() && places_.isSingle() && !fronts.empty()) fronts.resize(1, fronts.front());
  }
  fronts_ = fronts;
  judgeFront(fronts);
  if (fronts.size() == 1 && panels_.dropdownStays(fronts.front()) && places_.isSingle())
    found("the drop-down stays though another window came to the front");
  judgeCard(tabbed);
  const auto strip = mac_.strip();
  if (!strip.visible()) {
    ++count_.hidden;
    return places_.lookAway();
  }
  const auto order = places_.look(strip.tabs(), strip.frame().width, findings_);
  ++(order ? count_.whole : count_.partly);
  if (!order || fronts.size() != 1) return;
  const auto active = strip.activeTabIndex();
  if (!active || !((*order)[static_cast<std::size_t>(*active)] == fronts.front()))
    found("the active tab is not that of the front window " + fronts.front().title());
  judgeLooks(application, *order);
}

void Judge::judgeFront(const Windows& fronts) {
  const bool shown = mac_.strip().visible();
  const bool mayHide = fronts.empty() || std::ranges::any_of(fronts, isHiding);
  const bool mayShow = !std::ranges::all_of(fronts, isHiding);
  if (shown && !mayShow) {
    found("the strip is shown though no window in front can have it");
  } else if (!shown && !mayHide) {
    found("the strip is hidden though " + fronts.front().title() + " is in front");
  } else if (shown && fronts.size() == 1) {
    judgePlace(fronts.front());
  } else if (shown) {
    const auto at = mac_.strip().accessibilityFrame();
    if (std::ranges::none_of(fronts, [&](const auto& each) {
          const AxRect window = each.frame();
          return at.x == window.x && at.maxY() == window.y && at.width == window.width;
        }))
      found("the strip is over no window that may be in front");
  }
}

void Judge::judgePlace(const SimWindow& front) {
  const auto screens = mac_.screens().screens();
  const double height = screens.empty() ? 0 : screens.front().frame.height;
  const AxRect window = front.frame();
  const ScreenRect wanted{window.x, height - window.y, window.width, stripHeight};
  if (mac_.strip().frame() != wanted)
    found("the strip is at " + text(mac_.strip().frame()) + ", not at " + text(wanted) + " over " +
          front.title());
  if (mac_.strip().panel().window() != front.element())
    found("the strip stands above another window than " + front.title());

  // The strip has room under the menu bar of the first screen that the window reaches into, unless the window
  // cannot be moved.
  if (front.quirks().refusesMoves || front.quirks().frameDelay.count() > 0) return;
  double top = 0;
  if (!screens.empty()) {
    const Screen* on = &screens.front();
    for (const auto& screen : screens) {
      const AxRect area = mac_.screens().toAccessibility(screen.frame);
      if (window.x >= area.maxX() || window.maxX() <= area.x || window.y >= area.maxY() ||
          window.maxY() <= area.y)
        continue;
      on = &screen;
      break;
    }
    top = height - on->visibleFrame.maxY();
  }
  if (window.y < top + stripHeight - tolerance)
    found("there is no room for the strip above " + front.title());
}

void Judge::judgeLooks(const SimApplication& application, const Windows& tabs) {
  const auto strip = mac_.strip();
  if (strip.panel().drawing().isTorn()) found("pieces of an older drawing are left on the strip");
  const auto labels = strip.tabs();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    // Where a single tab without a label ends cannot be seen.
    if (labels.size() == 1 && labels[i].empty()) continue;
    const auto keys = names_.tagKeys(tabs[i]);
    const auto colors = state_.colorsOf(keys);
    const auto shown = nameOf(strip.tagOf(static_cast<int>(i)));
    if (colors.empty() || colors.contains(shown)) continue;
    std::string wrong = "the tab of " + tabs[i].title() + " has the colour " + shown.value_or("none") +
                        ", not " + (*colors.begin()).value_or("none") + " as of";
    for (const auto& key : keys) wrong += " " + key;
    found(wrong + ", among" + state_.describedTags());
  }
  for (const auto& each : tabs) {
    const auto files = names_.filesOf(each);
    const bool isFile = files.size() == 1 && files.begin()->has_value();
    if (isFile && !state_.expected().recent.contains(**files.begin()))
      found("the file of " + each.title() + " has a tab, and is not among the recent files");
  }
  const bool isOffice = mac_.workspace().frontmostApplication()->bundleId == "com.microsoft.Word";
  const bool saves = state_.expected().autoSaveMinutes > 0;
  for (const auto& tool : strip.tools()) {
    if (tool == "Rename" && !isOffice)
      found("documents of " + std::to_string(application.pid()) + " have a tool to be renamed");
    if (tool.ends_with(" Auto-save") && (tool.starts_with("\u25CF") != saves))
      found("the strip shows auto-save as " + tool);
  }
}

void Judge::judgeCard(const Windows& tabbed) {
  const auto title = panels_.cardTitle();
  if (!title) return;
  if (std::ranges::none_of(tabbed, [&](const auto& each) { return names_.mayBeCalled(each, *title); }))
    found("the card stands for a window without a tab: " + *title);
}

}  // namespace pellar
