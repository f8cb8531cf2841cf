#include "tests/simulation/TabPlaces.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <utility>

namespace pellar {
namespace {

constexpr double smallestTabbedWidth = 200;

// Of tabs that are as narrow as tabs get, each known by its mark.
std::size_t narrowestTabsIn(double width) {
  constexpr double firstMark = 14.5;
  constexpr double step = 30;
  return width <= firstMark ? 0 : static_cast<std::size_t>(std::ceil((width - firstMark) / step));
}

}  // namespace

bool TabPlaces::hasTab(const SimWindow& window) {
  return window.exists() && window.isNamed() && window.subrole() == "AXStandardWindow" &&
         window.frame().width >= smallestTabbedWidth;
}

bool TabPlaces::contains(const Windows& windows, const SimWindow& window) {
  return std::ranges::find(windows, window) != windows.end();
}

std::string TabPlaces::text(const std::vector<std::string>& labels) {
  std::string all;
  for (const auto& each : labels) all += " [" + each + "]";
  return all;
}

std::string TabPlaces::text(const Windows& windows) {
  std::vector<std::string> labels;
  for (const auto& each : windows) labels.push_back(each.title());
  return text(labels);
}

std::string TabPlaces::described() const {
  std::string out = known_ ? "order" : "order (not known)";
  for (const auto& each : order_)
    out += " [" + each.title() + "]" + (touched_.contains(each.id()) ? " touched" : "");
  return out;
}

void TabPlaces::dropped(const SimWindow& window, std::size_t place) {
  Windows others = shown_;
  std::erase(others, window);
  if (!contains(order_, window) || place > others.size()) return becomeUnsure();
  touched(window);
  std::erase(order_, window);
  // Where it comes among windows that are not seen is not said.
  for (const auto& each : order_)
    if (!contains(shown_, each)) touched(each);
  auto at = order_.begin();
  if (place > 0) at = std::next(std::ranges::find(order_, others[place - 1]));
  order_.insert(at, window);
}

void TabPlaces::noteNarrow() {
  for (const auto& each : order_)
    if (each.frame().width < smallestTabbedWidth) narrow_.insert(each.id());
}

void TabPlaces::forget() {
  pid_ = 0;
  order_.clear();
  shown_.clear();
  known_ = false;
}

void TabPlaces::begin(const SimApplication& application) {
  if (application.pid() == pid_) return;
  forget();
  pid_ = application.pid();
}

void TabPlaces::pass(const SimApplication& application) {
  orderUnknown_ = true;
  known_ = false;
  mayHaveCome(application, {});
  for (const auto& each : order_) touched(each);
}

// Its windows, but for these, may have got a tab meanwhile, anywhere among the others.
void TabPlaces::mayHaveCome(const SimApplication& application, const Windows& without) {
  for (const auto& each : application.windowsFrontToBack()) {
    if (each.subrole() != "AXStandardWindow" || contains(order_, each) || contains(without, each)) continue;
    order_.push_back(each);
    touched(each);
  }
}

// Tabs keep their order; those of other windows follow as their application names them.
TabPlaces::Windows TabPlaces::expect(const SimApplication& application) {
  Windows tabbed = application.windowsAsListed();
  std::erase_if(tabbed, [](const auto& each) { return !hasTab(each); });
  // One that was too narrow for a moment, as by a tile of no screen, lost its place.
  if (std::ranges::any_of(tabbed, [this](const auto& each) { return narrow_.contains(each.id()); }))
    becomeUnsure();
  // One may have had a tab, and gone to another space since.
  if (!isSingle()) mayHaveCome(application, tabbed);
  expected_ = order_;
  std::erase_if(expected_, [&](const auto& each) { return !contains(tabbed, each); });
  for (const auto& each : tabbed)
    if (!contains(expected_, each)) expected_.push_back(each);
  placed_ = !orderUnknown_ && !bringsUnknownPlace();
  return expected_;
}

// Absent where the labels do not tell which tab is whose.
std::optional<TabPlaces::Windows> TabPlaces::seenOrder(const std::vector<std::string>& labels) const {
  std::multimap<std::string, SimWindow> byLabel;
  for (const auto& window : expected_)
    for (const auto& label : labelsOf_(window)) byLabel.emplace(label, window);
  Windows seen;
  for (const auto& label : labels) {
    if (label.empty() || byLabel.count(label) != 1) return std::nullopt;
    const auto& window = byLabel.find(label)->second;
    if (contains(seen, window)) return std::nullopt;
    seen.push_back(window);
  }
  if (seen.size() != expected_.size()) return std::nullopt;
  return seen;
}

// One that no window accounts for.
std::optional<std::string> TabPlaces::strangeLabel(const std::vector<std::string>& labels) const {
  Windows left = expected_;
  for (const auto& label : labels) {
    if (label.empty()) continue;
    const auto match =
        std::ranges::find_if(left, [&](const auto& each) { return labelsOf_(each).contains(label); });
    if (match == left.end()) return label;
    left.erase(match);
  }
  return std::nullopt;
}

// Whether those that nothing was done to stand among each other as before.
bool TabPlaces::keepsPlaces(const Windows& seen) const {
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
bool TabPlaces::isSure() const {
  return isSingle() && (known_ || order_.empty()) && !bringsUnknownPlace();
}

// Whether one of them comes whose place among those that had no tab is not known.
bool TabPlaces::bringsUnknownPlace() const {
  return std::ranges::any_of(expected_, [this](const auto& each) {
    return touched_.contains(each.id()) && !contains(shown_, each) && contains(order_, each);
  });
}

std::optional<TabPlaces::Windows> TabPlaces::look(const std::vector<std::string>& labels, double stripWidth,
                                                  std::vector<std::string>& wrong) {
  const auto take = [this](std::optional<Windows> order) {
    known_ = order.has_value();
    shown_ = order.value_or(expected_);
    return order;
  };
  // The narrowest tabs run on past the right edge, where they cannot be seen.
  if (labels.size() < expected_.size() && labels.size() == narrowestTabsIn(stripWidth) &&
      std::ranges::all_of(labels, &std::string::empty))
    return take(std::nullopt);
  if (labels.size() != expected_.size()) {
    wrong.push_back("there are other tabs than windows: tabs" + text(labels) + ", windows" + text(expected_));
    return take(std::nullopt);
  }
  if (isSure()) {
    const bool reads = std::ranges::equal(labels, expected_, [this](const auto& label, const auto& window) {
      return label.empty() || labelsOf_(window).contains(label);
    });
    if (reads) return take(expected_);
    wrong.push_back("the tabs read" + text(labels) + ", not" + text(expected_));
    return take(std::nullopt);
  }
  const auto seen = seenOrder(labels);
  if (!seen) {
    if (const auto strange = strangeLabel(labels))
      wrong.push_back("a tab reads [" + *strange + "], as no window of" + text(expected_) + " does");
  } else if (!orderUnknown_ && known_ && !keepsPlaces(*seen)) {
    wrong.push_back("tabs changed places: now" + text(labels) + ", before" + text(shown_));
  }
  return take(seen);
}

// The order is known still, where nothing made it uncertain.
void TabPlaces::lookAway() {
  const bool sure = expected_.size() <= 1 ? isSingle() || !known_ : isSure();
  shown_ = expected_;
  known_ = sure;
}

void TabPlaces::end() {
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
  if (!known_ || !placed_)
    for (const auto& each : unknown) touched(each);
  endWithout();
}

void TabPlaces::endWithout() {
  narrow_.clear();
  happenings_ = 0;
  orderUnknown_ = false;
  std::erase_if(touched_, [this](WindowId id) {
    return (known_ && std::ranges::find(shown_, id, &SimWindow::id) != shown_.end()) ||
           std::ranges::find(order_, id, &SimWindow::id) == order_.end();
  });
}

}  // namespace pellar
