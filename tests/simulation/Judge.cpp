#include "tests/simulation/Judge.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>
#include <utility>

#include "tests/simulation/Titles.h"

namespace pellar {
namespace {

constexpr double stripHeight = 32;
constexpr double smallestTabbedWidth = 200;
constexpr double tolerance = 0.5;
constexpr Size dropdownSize{480, 300};
constexpr Size cardSize{200, 58};
constexpr Size pickerSize{372, 150};

std::string text(const ScreenRect& rect) {
  std::ostringstream out;
  out << "(" << rect.x << ", " << rect.y << ", " << rect.width << ", " << rect.height << ")";
  return out.str();
}

std::string text(const std::vector<std::string>& labels) {
  std::string all;
  for (const auto& each : labels) all += " [" + each + "]";
  return all;
}

std::string text(const std::vector<SimWindow>& windows) {
  std::vector<std::string> labels;
  for (const auto& each : windows) labels.push_back(each.title());
  return text(labels);
}

bool contains(const std::vector<SimWindow>& windows, const SimWindow& window) {
  return std::ranges::find(windows, window) != windows.end();
}

bool isHiding(const SimWindow& front) {
  return front.isMinimised() || front.isFullScreen() || !(front.frame().width > 0);
}

// Of tabs that are as narrow as tabs get, each known by its mark.
std::size_t narrowestTabsIn(double width) {
  constexpr double firstMark = 14.5;
  constexpr double step = 30;
  return width <= firstMark ? 0 : static_cast<std::size_t>(std::ceil((width - firstMark) / step));
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
        // It may have been another one in between.
        if (front != nullptr && front->pid() == pid_) return draggedSomewhere();
        forgetOrder();
      })),
      resized_(mac.applicationNotifications().add([this](const SimNotification&) { noteNarrow(); })) {}

void Judge::noteNarrow() {
  for (const auto& each : order_)
    if (each.frame().width < smallestTabbedWidth) narrow_.insert(each.id());
}

void Judge::started() {
  forgetOrder();
  searchedOver_.reset();
}

void Judge::forgetOrder() {
  pid_ = 0;
  order_.clear();
  shown_.clear();
  known_ = false;
}

void Judge::dropped(const SimWindow& window, std::size_t place) {
  Windows others = shown_;
  std::erase(others, window);
  if (!contains(order_, window) || place > others.size()) return draggedSomewhere();
  touched(window);
  std::erase(order_, window);
  // Where it comes among windows that are not seen is not said.
  for (const auto& each : order_)
    if (!contains(shown_, each)) touched(each);
  auto at = order_.begin();
  if (place > 0) at = std::next(std::ranges::find(order_, others[place - 1]));
  order_.insert(at, window);
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
}

std::optional<SimWindow> Judge::onlyWindowWith(const std::string& label) const {
  const auto* application = inFront();
  std::optional<SimWindow> only;
  if (application == nullptr || label.empty()) return only;
  for (const auto& each : application->windowsFrontToBack()) {
    if (!labelsOf(each).contains(label)) continue;
    if (only) return std::nullopt;
    only = each;
  }
  return only;
}

bool Judge::frontAnswers() const {
  const auto* application = inFront();
  return application != nullptr && answers(*application);
}

bool Judge::isFrontInDoubt() const {
  const auto* application = inFront();
  return application != nullptr && answers(*application) && inDoubt_.contains(application->pid());
}

void Judge::looksAgain() {
  const auto* application = inFront();
  if (application == nullptr || !answers(*application)) return;
  asked_ = application->pid();
  if (inDoubt_.erase(asked_) > 0) orderUnknown_ = true;
}

bool Judge::isInDoubt(const SimApplication& application) {
  if (!answers(application)) {
    leftInDoubt(application.pid());
    log_.mayRefuse(application.pid());
  }
  if (asked_ == application.pid()) return false;
  return inDoubt_.contains(application.pid()) || !application.quirks().untoldNotifications.empty();
}

bool Judge::hasTab(const SimWindow& window) {
  return window.exists() && window.isNamed() && window.subrole() == "AXStandardWindow" &&
         window.frame().width >= smallestTabbedWidth;
}

SimDocumentPointer Judge::documentOf(const SimWindow& window) const {
  for (const auto& document : mac_.office().documents(applications_.back()))
    if (document->window == window) return document;
  return nullptr;
}

std::set<std::optional<std::string>> Judge::filesOf(const SimWindow& window) const {
  // An Office application is asked for its documents, and may not have been able to tell.
  if (window.pid() != applications_.back().pid()) return {titles::fileOf(window.document())};
  // Windows are told apart by their documents' names.
  std::set<std::optional<std::string>> files{std::nullopt};
  for (const auto& document : mac_.office().documents(applications_.back()))
    if (!document->path.empty() && (document->window == window ||
                                    titles::nameOfFile(document->name) == titles::plainName(window.title())))
      files.insert(document->path);
  const auto before = namesakes_.find(window.id());
  if (before != namesakes_.end() && before->second.title == window.title())
    files.insert(before->second.files.begin(), before->second.files.end());
  return files;
}

std::set<std::string> Judge::labelsOf(const SimWindow& window) const {
  std::set<std::string> labels;
  for (const auto& file : filesOf(window))
    labels.insert(file ? titles::nameOfFile(*file) : titles::plainName(window.title()));
  return labels;
}

std::set<std::string> Judge::tagKeys(const SimWindow& window) const {
  std::set<std::string> keys;
  // What has no path on this machine may be told under any.
  const auto isElsewhere = [](const auto& file) { return file && !file->starts_with("/"); };
  if (std::ranges::any_of(filesOf(window), isElsewhere)) return keys;
  for (const auto& file : filesOf(window)) keys.insert(titles::keyOf(window.title(), file));
  return keys;
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
  out << "; order" << (known_ ? "" : " (not known)");
  for (const auto& each : order_)
    out << " [" << each.title() << "]" << (touched_.contains(each.id()) ? " touched" : "");
  const auto strip = mac_.strip();
  if (!strip.visible()) return out.str() + "; the strip is hidden";
  const auto active = strip.activeTabIndex();
  return out.str() + "; strip at " + text(strip.frame()) + text(strip.tabs()) + ", active " +
         (active ? std::to_string(*active) : "none");
}

void Judge::atRest() {
  for (const auto& application : applications_) {
    for (const auto& window : application.windowsFrontToBack()) titles_[window.title()].insert(window.id());
    if (!answers(application)) {
      leftInDoubt(application.pid());
      log_.mayRefuse(application.pid());
    }
  }
  for (const auto& window : applications_.back().windowsFrontToBack())
    namesakes_.insert_or_assign(window.id(), Namesakes{window.title(), filesOf(window)});
  if (const auto wrong = log_.compare()) found("a line in the log: " + *wrong);
  if (const auto wrong = state_.compare()) found(*wrong);
  if (const auto wrong = updates_.compare(mac_.notifications().shown())) found(*wrong);
  judgePanelsOverNothing();
  judgeStrip();
  asked_ = 0;
}

void Judge::judgeStrip() {
  const auto front = mac_.workspace().frontmostApplication();
  // While the user works with the program itself its strip stays as it was.
  if (front && front->bundleId == mac_.workspace().ownBundleId()) return forgetOrder();
  const SimApplication* application = inFront();
  // What the last one in front does not tell is not known to be over.
  if (application != nullptr) lastInFront_ = application->pid();
  if (application == nullptr &&
      (inDoubt_.contains(lastInFront_) ||
       std::ranges::any_of(applications_, [](const auto& each) { return !answers(each); })))
    return forgetOrder();
  if (application == nullptr || !state_.follows(*front->bundleId)) {
    judgeHidden(application == nullptr ? "nobody is in front" : "the application is not followed");
    forgetOrder();
    return closeInterval();
  }
  if (application->pid() != pid_) {
    forgetOrder();
    pid_ = application->pid();
  }
  if (isInDoubt(*application)) {
    ++count_.partly;
    orderUnknown_ = true;
    known_ = false;
    losePlaces(*application, {});
    for (const auto& each : order_) touched(each);
    return;
  }
  Windows tabbed = application->windowsAsListed();
  std::erase_if(tabbed, [](const auto& each) { return !hasTab(each); });
  // One that was too narrow for a moment, as by a tile of no screen, lost its place.
  if (std::ranges::any_of(tabbed, [this](const auto& each) { return narrow_.contains(each.id()); }))
    draggedSomewhere();
  // One may have had a tab, and gone to another space since.
  if (!isSingle()) losePlaces(*application, tabbed);
  judgeTabs(*application, tabbed, asked_ == application->pid());
  closeInterval();
}

// Its windows, but for these, may have got a tab meanwhile, anywhere among the others.
void Judge::losePlaces(const SimApplication& application, const Windows& without) {
  for (const auto& each : application.windowsFrontToBack()) {
    if (each.subrole() != "AXStandardWindow" || contains(order_, each) || contains(without, each)) continue;
    order_.push_back(each);
    touched(each);
  }
}

void Judge::closeInterval() {
  narrow_.clear();
  happenings_ = 0;
  orderUnknown_ = false;
  std::erase_if(touched_, [this](WindowId id) {
    return (known_ && std::ranges::find(shown_, id, &SimWindow::id) != shown_.end()) ||
           std::ranges::find(order_, id, &SimWindow::id) == order_.end();
  });
}

void Judge::judgeHidden(const std::string& why) {
  ++count_.hidden;
  if (mac_.strip().visible()) found("the strip is shown though " + why);
}

// Tabs keep their order; those of other windows follow as their application names them.
Judge::Windows Judge::expectedOrder(const Windows& listed) const {
  Windows expected = order_;
  std::erase_if(expected, [&](const auto& each) { return !contains(listed, each); });
  for (const auto& each : listed)
    if (!contains(expected, each)) expected.push_back(each);
  return expected;
}

// Absent where the labels do not tell which tab is whose.
std::optional<Judge::Windows> Judge::seenOrder(const Windows& tabbed) const {
  std::multimap<std::string, SimWindow> byLabel;
  for (const auto& window : tabbed)
    for (const auto& label : labelsOf(window)) byLabel.emplace(label, window);
  Windows seen;
  for (const auto& label : mac_.strip().tabs()) {
    if (label.empty() || byLabel.count(label) != 1) return std::nullopt;
    const auto& window = byLabel.find(label)->second;
    if (contains(seen, window)) return std::nullopt;
    seen.push_back(window);
  }
  if (seen.size() != tabbed.size()) return std::nullopt;
  return seen;
}

// Whether those that nothing was done to stand among each other as before.
bool Judge::keepsPlaces(const Windows& seen) const {
  const auto stayed = [&](const SimWindow& each) {
    return !touched_.contains(each.id()) && contains(shown_, each) && contains(seen, each);
  };
  Windows before;
  Windows after;
  std::ranges::copy_if(shown_, std::back_inserter(before), stayed);
  std::ranges::copy_if(seen, std::back_inserter(after), stayed);
  return before == after;
}

// Whether no other order is right.
bool Judge::isSure(const Windows& expected) const {
  return isSingle() && (known_ || order_.empty()) && !bringsUnknownPlace(expected);
}

// Whether one of them comes whose place among those that had no tab is not known.
bool Judge::bringsUnknownPlace(const Windows& expected) const {
  return std::ranges::any_of(expected, [this](const auto& each) {
    return touched_.contains(each.id()) && !contains(shown_, each) && contains(order_, each);
  });
}

std::optional<Judge::Windows> Judge::judgeOrder(const SimApplication&, const Windows& tabbed,
                                                const Windows& expected) {
  const auto labels = mac_.strip().tabs();
  // The narrowest tabs run on past the right edge, where they cannot be seen.
  if (labels.size() < tabbed.size() && labels.size() == narrowestTabsIn(mac_.strip().frame().width) &&
      std::ranges::all_of(labels, &std::string::empty))
    return std::nullopt;
  if (labels.size() != tabbed.size()) {
    found("there are other tabs than windows: tabs" + text(labels) + ", windows" + text(expected));
    return std::nullopt;
  }
  const bool sure = isSure(expected);
  const auto reads = [&](const Windows& order) {
    return std::ranges::equal(labels, order, [&](const auto& label, const auto& window) {
      return label.empty() || labelsOf(window).contains(label);
    });
  };
  if (sure && reads(expected)) return expected;
  if (sure) {
    found("the tabs read" + text(labels) + ", not" + text(expected));
    return std::nullopt;
  }
  const auto seen = seenOrder(tabbed);
  if (!seen) {
    Windows left = tabbed;
    for (const auto& label : labels) {
      if (label.empty()) continue;
      const auto match =
          std::ranges::find_if(left, [&](const auto& each) { return labelsOf(each).contains(label); });
      if (match == left.end()) {
        found("a tab reads [" + label + "], as no window of" + text(tabbed) + " does");
        return std::nullopt;
      }
      left.erase(match);
    }
    return std::nullopt;
  }
  if (!orderUnknown_ && known_ && !keepsPlaces(*seen))
    found("tabs changed places: now" + text(labels) + ", before" + text(shown_));
  return seen;
}

void Judge::judgeTabs(const SimApplication& application, const Windows& tabbed, bool asked) {
  const Windows expected = expectedOrder(tabbed);
  // The focused window is in front; without a tab of it the first that is not minimised.
  Windows fronts;
  const auto focused = application.focusedWindow();
  if (focused && contains(tabbed, *focused)) {
    fronts = {*focused};
  } else {
    std::ranges::copy_if(expected, std::back_inserter(fronts),
                         [](const auto& each) { return !each.isMinimised(); });
    // A drop of a tab does not bring another window to the front.
    if (asked && known_ && isSingle() && !fronts.empty()) fronts.resize(1, fronts.front());
  }
  const bool placed = !orderUnknown_ && !bringsUnknownPlace(expected);
  judgeFront(fronts);
  judgeDropdown(fronts);
  judgeCard(tabbed);
  if (!mac_.strip().visible()) {
    // The order is known still, where nothing made it uncertain.
    ++count_.hidden;
    const bool sure = tabbed.size() <= 1 ? isSingle() || !known_ : isSure(expected);
    shown_ = expected;
    known_ = sure;
    if (!sure) orderUnknown_ = true;
  } else {
    const auto order = judgeOrder(application, tabbed, expected);
    ++(order ? count_.whole : count_.partly);
    known_ = order.has_value();
    shown_ = order.value_or(expected);
    if (order) {
      const auto active = mac_.strip().activeTabIndex();
      if (fronts.size() == 1 && (!active || !((*order)[static_cast<std::size_t>(*active)] == fronts.front())))
        found("the active tab is not that of the front window " + fronts.front().title());
      if (fronts.size() == 1) judgeLooks(application, *order, fronts.front());
    }
  }
  // Windows of other spaces wait for their tabs.
  Windows waiting = order_;
  std::erase_if(waiting, [&](const auto& each) {
    return contains(shown_, each) || !each.exists() || each.isNamed() || each.isBehindNativeTab();
  });
  Windows now;
  auto next = shown_.begin();
  for (const auto& each : order_) {
    if (contains(waiting, each)) {
      now.push_back(each);
    } else if (contains(shown_, each) && next != shown_.end()) {
      now.push_back(*next++);
    }
  }
  now.insert(now.end(), next, shown_.end());
  order_ = std::move(now);
  // Where they are among those that are seen is as little known as these were.
  const Windows& unknown = !known_ ? order_ : waiting;
  if (!known_ || !placed) {
    for (const auto& each : unknown) touched(each);
  }
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

void Judge::judgeLooks(const SimApplication& application, const Windows& tabs, const SimWindow&) {
  const auto strip = mac_.strip();
  if (strip.panel().drawing().isTorn()) found("pieces of an older drawing are left on the strip");
  const auto labels = strip.tabs();
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    // Where a single tab without a label ends cannot be seen.
    if (labels.size() == 1 && labels[i].empty()) continue;
    const auto keys = tagKeys(tabs[i]);
    const auto colors = state_.colorsOf(keys);
    const auto shown = nameOf(strip.tagOf(static_cast<int>(i)));
    if (colors.empty() || colors.contains(shown)) continue;
    std::string wrong = "the tab of " + tabs[i].title() + " has the colour " + shown.value_or("none") +
                        ", not " + (*colors.begin()).value_or("none") + " as of";
    for (const auto& key : keys) wrong += " " + key;
    found(wrong + ", among" + state_.describedTags());
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

const SimPanel* Judge::panelOf(Size contentSize) const {
  for (const auto* panel : mac_.panels().all())
    if (panel->style().contentSize == contentSize) return panel;
  return nullptr;
}

bool Judge::isShown(Size contentSize) const {
  const auto* panel = panelOf(contentSize);
  return panel != nullptr && panel->isVisible();
}

void Judge::judgePanelsOverNothing() {
  const bool dropdown = isShown(dropdownSize);
  if (mac_.eventMonitors().watched() != dropdown)
    found("clicks are watched without the drop-down, or not with it");
  if (mac_.strip().visible()) return;
  if (dropdown) found("the drop-down stands without the strip");
  if (isShown(cardSize)) found("the card stands without the strip");
  if (isShown(pickerSize)) found("the picker stands without the strip");
}

void Judge::judgeCard(const Windows& tabbed) {
  if (!isShown(cardSize)) return;
  const auto& items = panelOf(cardSize)->drawing().items();
  const auto title = std::ranges::find_if(items, [](const auto& item) { return item.isText(); });
  if (title == items.end()) return found("the card is empty");
  const auto isOf = [&](const SimWindow& window) {
    const auto owner = titles_.find(title->text);
    if (owner != titles_.end() && owner->second.contains(window.id())) return true;
    return std::ranges::any_of(filesOf(window),
                               [&](const auto& file) { return file && file->ends_with("/" + title->text); });
  };
  if (std::ranges::none_of(tabbed, isOf)) found("the card stands for a window without a tab: " + title->text);
}

void Judge::judgeDropdown(const Windows& fronts) {
  if (!isShown(dropdownSize)) return searchedOver_.reset();
  if (fronts.size() != 1) return;
  const WindowId front = fronts.front().id();
  if (searchedOver_ && *searchedOver_ != front && isSingle())
    found("the drop-down stays though another window came to the front");
  searchedOver_ = front;
}

}  // namespace pellar
