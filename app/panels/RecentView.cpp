#include "app/panels/RecentView.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "app/panels/OfficeSeeds.h"
#include "core/AppState.h"
#include "core/Notify.h"
#include "core/PathParts.h"
#include "core/Recent.h"
#include "core/ShortFolder.h"
#include "platform/MainLoop.h"
#include "platform/VirtualKey.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

constexpr double sideMargin = 10;
constexpr double endMargin = 8;

constexpr ListStyle style{.rowHeight = 34,
                          .title = {.inset = 4,
                                    .top = 1,
                                    .height = 16,
                                    .font = {12.5, FontWeight::regular},
                                    .color = Color::white()},
                          .subtitle = {.inset = 4,
                                       .top = 19,
                                       .height = 13,
                                       .font = {10.5, FontWeight::regular},
                                       .color = Color::white(0.55),
                                       .truncation = ListLabel::Truncation::middle}};

bool exists(const std::string& path) {
  std::error_code error;  // what cannot be looked at is not there for the user
  return isUsablePath(path) && std::filesystem::exists(path, error);
}

}  // namespace

RecentView::RecentView(ViewHost& host, std::shared_ptr<StateStore> store, const Platform& platform)
    : host_(host), store_(std::move(store)), platform_(platform), list_(host.makeListView(style)) {
  list_->setOnDoubleClick([this] { openSelected(); });
  list_->setOnKeyDown([this](std::uint16_t keyCode) { return keyDown(keyCode); });
}

void RecentView::layout() {
  const ViewRect bounds = host_.bounds();
  list_->setFrame({sideMargin, endMargin, bounds.width - 2 * sideMargin, bounds.height - 2 * endMargin});
}

void RecentView::reload(const std::string& query) {
  const AppState& state = store_->state();
  const auto seeds = app ? officeSeeds(platform_.propertyLists, platform_.folders.home) : NameMap<double>();
  items_ = Recent::list(state.recent, seeds, query, app, appKey, state.recentApp, exists);
  list_->reload(items_.size(), [this](std::size_t index) { return row(index); });
}

ListRow RecentView::row(std::size_t index) const {
  const std::string& path = items_.at(index);
  return {std::string(lastComponent(path)),
          folderFromHome(withoutLastComponent(path), platform_.folders.home.string())};
}

AccessibleElement RecentView::accessibleElement() const {
  AccessibleElement list{
      .id = "list", .role = AccessibleRole::list, .name = "Recent files", .frame = list_->frame()};
  const auto selected = list_->selectedRow();
  for (std::size_t i = 0; i < items_.size(); ++i) {
    ListRow content = row(i);
    list.children.push_back({.id = items_[i],
                             .role = AccessibleRole::row,
                             .name = std::move(content.title),
                             .help = std::move(content.subtitle),
                             .frame = list_->rowFrame(i),
                             .selected = selected == i,
                             .focused = selected == i && list_->hasFocus(),
                             .canBePressed = true});
  }
  AccessibleElement whole{.id = "drop-down", .name = "Recent files", .frame = host_.bounds()};
  whole.children.push_back(std::move(list));
  return whole;
}

// A row is opened, as by a double click: a click alone does nothing that the user has not asked for already.
bool RecentView::perform(AccessibleAction action, const std::string& id) {
  const auto found = std::ranges::find(items_, id);
  if (action != AccessibleAction::press || found == items_.end()) return false;
  list_->selectRow(static_cast<std::size_t>(found - items_.begin()));
  openSelected();
  return true;
}

bool RecentView::handle(const std::string& selector) {
  if (selector == "insertNewline:") {
    if (!list_->selectedRow()) list_->selectRow(0);
    openSelected();
    return true;
  }
  if (selector == "moveDown:") {
    list_->focus();
    list_->selectRow(0);
    return true;
  }
  if (selector == "cancelOperation:") {
    escape();
    return true;
  }
  return false;
}

bool RecentView::keyDown(std::uint16_t keyCode) {
  if (keyCode == VirtualKey::escape) {
    escape();
    return true;
  }
  if (keyCode == VirtualKey::returnKey) {
    openSelected();
    return true;
  }
  return false;
}

void RecentView::openSelected() {
  const auto selected = list_->selectedRow();
  if (!selected || *selected >= items_.size()) return;
  // Kept apart from the list, which changes when the panel closes.
  const std::string path = items_[*selected];
  const double now = platform_.mainLoop.secondsSince1970();
  store_->update([&](AppState& state) { state.touchRecent(path, std::nullopt, now); });
  platform_.workspace.open(path);
  notify(onChosen);
}

void RecentView::escape() {
  notify(onEscape);
}

}  // namespace pellar
