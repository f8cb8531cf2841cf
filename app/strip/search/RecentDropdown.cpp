#include "app/strip/search/RecentDropdown.h"

#include <utility>

#include "app/strip/place/PanelPlace.h"

namespace pellar {
namespace {

constexpr Size dropdownSize{480, 300};
constexpr double gap = 4;  // between the search field and the drop-down

}  // namespace

RecentDropdown::RecentDropdown(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip,
                               TabStripView& view)
    : screens_(platform.screens),
      strip_(strip),
      view_(view),
      panel_(platform.panels.makePanel({.contentSize = dropdownSize, .level = PanelLevel::popUpMenu})),
      recentView_(panel_->host(), std::move(store), platform) {
  panel_->setView(&recentView_);
}

RecentDropdown::~RecentDropdown() {
  panel_->setView(nullptr);
}

void RecentDropdown::list(const std::optional<TrackedApp>& app) {
  recentView_.app = app ? app->office : std::nullopt;
  recentView_.appKey = app ? std::optional(app->id) : std::nullopt;
  recentView_.reload(view_.searchField().text());
}

void RecentDropdown::show() {
  position();
  panel_->orderFrontRegardless();
}

void RecentDropdown::hide() {
  panel_->orderOut();
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
  const double left = PanelPlace::left(field->maxX() - dropdownSize.width, dropdownSize.width, visible);
  panel_->setFrame(PanelPlace::hanging({left, field->minY() - gap}, dropdownSize), true);
}

}  // namespace pellar
