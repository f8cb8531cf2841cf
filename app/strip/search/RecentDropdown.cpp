#include "app/strip/search/RecentDropdown.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/Notify.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr Size dropdownSize{480, 300};
constexpr double screenMargin = 8;
constexpr double gap = 4;

}  // namespace

RecentDropdown::RecentDropdown(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip,
                               TabStripView& view)
    : loop_(platform.mainLoop),
      eventMonitors_(platform.eventMonitors),
      screens_(platform.screens),
      strip_(strip),
      view_(view),
      panel_(platform.panels.makePanel({.contentSize = dropdownSize, .level = PanelLevel::popUpMenu})),
      recentView_(panel_->host(), std::move(store), platform) {
  panel_->setView(&recentView_);
}

RecentDropdown::~RecentDropdown() {
  panel_->setView(nullptr);
}

void RecentDropdown::open(const std::optional<TrackedApp>& app) {
  recentView_.app = app ? app->office : std::nullopt;
  recentView_.appKey = app ? std::optional(app->id) : std::nullopt;
  recentView_.reload(view_.searchField().text());
  if (!open_) {
    open_ = true;
    // A tab that comes meanwhile must not fold the field away from under what is typed.
    view_.setSearchExpanded(true);
    position();
    panel_->orderFrontRegardless();
    clickMonitors_.push_back(eventMonitors_.onGlobalMouseDown([this] { clickedOutside(); }));
    clickMonitors_.push_back(eventMonitors_.onLocalMouseDown([this](const ObservedClick& click) {
      if (!isInside(click)) clickedOutside();
    }));
  }
  strip_.makeKeyAndOrderFront();
  view_.searchField().focus();
}

void RecentDropdown::searchTextChanged() {
  recentView_.reload(view_.searchField().text());
}

bool RecentDropdown::close() {
  if (!open_) return false;
  // First, since giving up the keyboard below comes back here.
  open_ = false;
  clickMonitors_.clear();
  view_.searchField().setText("");
  if (!folding_.active()) view_.setSearchExpanded(false);
  panel_->orderOut();
  strip_.clearFirstResponder();
  if (strip_.isKey()) strip_.resignKey();
  return true;
}

void RecentDropdown::position() {
  // The strip may have been resized since it was last laid out.
  view_.layout();
  const auto field = strip_.host().toScreen(view_.searchField().frame());
  if (!field) return;
  ScreenRect visible;
  if (const auto own = strip_.screenVisibleFrame()) {
    visible = *own;
  } else if (const auto screens = screens_.screens(); !screens.empty()) {
    visible = screens.front().frame;
  }
  const double right = std::min(visible.maxX() - screenMargin, field->maxX());
  const double left = std::max(visible.minX() + screenMargin, right - dropdownSize.width);
  const double top = field->minY() - gap;
  panel_->setFrame({left, top - dropdownSize.height, dropdownSize.width, dropdownSize.height}, true);
}

void RecentDropdown::clickedOutside() {
  // Folding gives the tabs the field's room. The press is delivered after this, and is to meet the tab that
  // the user saw under the pointer.
  folding_ = loop_.after(0ms, [this] {
    if (!open_) view_.setSearchExpanded(false);
    folding_.cancel();
  });
  notify(onOutsideClick);
}

bool RecentDropdown::isInside(const ObservedClick& click) {
  if (click.panel == panel_.get()) return true;
  if (click.panel != &strip_) return false;
  return view_.searchField().frame().contains(strip_.host().fromScreen(click.location));
}

}  // namespace pellar
