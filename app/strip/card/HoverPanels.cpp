#include "app/strip/card/HoverPanels.h"

#include <string>
#include <utility>

#include "core/PathParts.h"
#include "core/ShortFolder.h"

namespace pellar {

HoverPanels::HoverPanels(const Platform& platform, std::shared_ptr<const TrackedPicture> picture,
                         std::shared_ptr<WindowActions> actions, std::shared_ptr<const DocumentPaths> paths)
    : platform_(platform),
      picture_(std::move(picture)),
      actions_(std::move(actions)),
      paths_(std::move(paths)) {}

void HoverPanels::tabHovered(std::optional<WindowId> id, const std::optional<ScreenRect>& tab) {
  const auto window = id ? picture_->window(*id) : nullptr;
  if (!window || !tab || *pauses_ > 0) {
    if (tabCard_) tabCard_->scheduleClose();
    return;
  }
  const auto known = paths_->of(*window);
  if (!known) {
    tabCard().show(*id, window->title, std::nullopt, *tab);
    return;
  }
  const std::string& path = known->path;
  tabCard().show(*id, std::string(lastComponent(path)),
                 shortFolder(withoutLastComponent(path), platform_.folders.home.string()), *tab);
}

void HoverPanels::zoomHovered(const std::optional<ScreenRect>& tool) {
  if (tool && *pauses_ == 0) {
    pickerOver_ = picture_->front ? std::optional(picture_->front->id()) : std::nullopt;
    snapPicker().show(*tool);
  } else if (snapPicker_) {
    snapPicker_->scheduleClose();
  }
}

void HoverPanels::pictureChanged() {
  const auto hasTab = [this](WindowId id) { return picture_->window(id) != nullptr; };
  if (tabCard_) tabCard_->keepOnly(hasTab);
  if (pickerOver_ && !hasTab(*pickerOver_)) snapPicker_->hide();
}

Subscription HoverPanels::pause() {
  hide();
  ++*pauses_;
  return Subscription([pauses = pauses_] { --*pauses; });
}

void HoverPanels::hide() {
  if (tabCard_) tabCard_->hide();
  if (snapPicker_) snapPicker_->hide();
}

TabCard& HoverPanels::tabCard() {
  if (tabCard_) return *tabCard_;
  const auto act = [picture = picture_, actions = actions_](WindowId id, StripAction action) {
    const auto window = picture->window(id);
    if (!window) return;
    if (action == StripAction::minimize) actions->minimize(*window);
    if (action == StripAction::zoom) actions->zoom(*window);
    if (action == StripAction::closeWindow) actions->close(*window);
  };
  tabCard_ = std::make_unique<TabCard>(platform_.panels, platform_.mainLoop, platform_.screens, act);
  return *tabCard_;
}

SnapPicker& HoverPanels::snapPicker() {
  if (snapPicker_) return *snapPicker_;
  const auto pick = [picture = picture_, actions = actions_](Tile tile) {
    if (const auto front = picture->front) actions->tile(*front, tile);
  };
  snapPicker_ = std::make_unique<SnapPicker>(platform_.panels, platform_.mainLoop, platform_.screens, pick);
  return *snapPicker_;
}

}  // namespace pellar
