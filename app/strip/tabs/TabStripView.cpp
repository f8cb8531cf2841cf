#include "app/strip/tabs/TabStripView.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/strip/tabs/StripDescription.h"
#include "app/strip/tabs/StripDrawing.h"
#include "app/strip/tabs/StripWords.h"
#include "core/Log.h"

namespace pellar {
namespace {

constexpr double dragThreshold = 4;

}  // namespace

TabStripView::TabStripView(ViewHost& host) : host_(host), search_(host.makeSearchField()) {
  search_->setPlaceholder(std::string(StripWords::name(StripAction::search)));
}

TabStripView::~TabStripView() = default;

StripLayout TabStripView::geometry() const {
  return {host_.bounds(),
          {tabs_.size(), searchExpanded_, officeTools_, renameTool_, autoSaveOn_},
          host_.textMeasure()};
}

void TabStripView::setTabs(std::vector<TabItem> tabs) {
  if (tabs == tabs_) return;
  const std::optional<std::size_t> hoveredBefore = indexOf(hoveredTab_);
  const std::vector<TabItem> before = std::exchange(tabs_, std::move(tabs));
  host_.accessibleElementChanged();
  if (before.size() != tabs_.size()) {
    invalidateEverything();
    return;
  }
  if (draggedTab_) {
    // The dragged tab, its slot and the drop marker may all have moved.
    host_.setNeedsDisplay();
    return;
  }

  const StripLayout layout = geometry();
  const bool labelsShown = layout.tabWidth() >= StripLayout::labelMinimumTabWidth;
  const std::optional<std::size_t> hovered = indexOf(hoveredTab_);
  for (std::size_t i = 0; i < tabs_.size(); ++i) {
    const TabItem& was = before[i];
    const TabItem& is = tabs_[i];
    const bool hoverChanged = (hoveredBefore == i) != (hovered == i);
    if (was.active != is.active || was.tag != is.tag || (labelsShown && was.label != is.label) ||
        hoverChanged) {
      invalidateTab(layout, i);
    }
  }
}

void TabStripView::setSearchExpanded(bool expanded) {
  if (std::exchange(searchExpanded_, expanded) != expanded) invalidateEverything();
}

void TabStripView::setOfficeTools(bool shown) {
  if (std::exchange(officeTools_, shown) != shown) invalidateEverything();
}

void TabStripView::setRenameTool(bool shown) {
  if (std::exchange(renameTool_, shown) != shown) invalidateEverything();
}

void TabStripView::setAccent(const Color& accent) {
  if (std::exchange(accent_, accent) == accent || tabs_.empty()) return;
  if (draggedTab_) {
    host_.setNeedsDisplay();
    return;
  }
  const StripLayout layout = geometry();
  ViewRect tabsArea = layout.tabRect(0);
  tabsArea.width = layout.tabRect(tabs_.size() - 1).maxX() - tabsArea.minX();
  invalidate(tabsArea);
}

void TabStripView::setAutoSaveOn(bool on) {
  if (on == autoSaveOn_) return;
  const StripLayout before = geometry();
  autoSaveOn_ = on;
  const StripLayout after = geometry();
  host_.accessibleElementChanged();
  if (!std::ranges::equal(before.tools(), after.tools(), {}, &PlacedTool::rect, &PlacedTool::rect)) {
    invalidateEverything();
  } else if (const auto tool = after.toolRect(StripAction::autoSave)) {
    invalidate(*tool);
  }
}

void TabStripView::layout() {
  const StripLayout layout = geometry();
  if (search_->isHidden() != layout.searchHidden()) search_->setHidden(layout.searchHidden());
  if (const ViewRect frame = layout.searchFrame(); search_->frame() != frame) search_->setFrame(frame);
}

void TabStripView::draw(Canvas& canvas, const ViewRect& dirty) {
  StripPicture picture{tabs_, indexOf(hoveredTab_), std::nullopt, accent_, autoSaveOn_};
  if (const auto dragged = indexOf(draggedTab_)) picture.dragged = DraggedTab{*dragged, dragX_};
  drawStrip(geometry(), picture, canvas, dirty);
}

void TabStripView::mouseDown(const MouseEvent& event) {
  abandonPress();
  if (event.control) {
    lastPressMetEmptyStrip_ = false;
    rightMouseDown(event);
  } else {
    mouseDownOn(geometry().hit(event.location), event);
  }
}

void TabStripView::mouseDownOn(const StripHit& hit, const MouseEvent& event) {
  const bool metEmptyStripBefore = std::exchange(lastPressMetEmptyStrip_, false);
  if (hit.action) {
    notify(onAction, *hit.action, event);
  } else if (!hit.tab && event.clickCount == 2 && metEmptyStripBefore) {
    notify(onAction, StripAction::zoom, event);
  } else {
    lastPressMetEmptyStrip_ = !hit.tab;
    beginPress(event, hit);
  }
}

void TabStripView::beginPress(const MouseEvent& event, const StripHit& hit) {
  press_ = Press{event.screenLocation, std::nullopt, hit.close};
  if (hit.tab) press_->tab = PressedTab{*hit.tab, tabs_[*hit.tab].id};
  notify(onTabHover, std::nullopt, std::nullopt);
}

void TabStripView::mouseDragged(const MouseEvent& event) {
  if (!press_) return;
  const ScreenPoint offset{event.screenLocation.x - press_->location.x,
                           event.screenLocation.y - press_->location.y};
  if (!dragging_) {
    Log::write("strip mouseDragged tab=" + (press_->tab ? std::to_string(press_->tab->index) : "nil"));
    if (std::hypot(offset.x, offset.y) <= dragThreshold) return;
    dragging_ = true;
    if (press_->tab && !press_->close) {
      draggedTab_ = press_->tab->id;
      dragX_ = event.location.x;
      invalidateTab(geometry(), indexOf(draggedTab_));
    }
  }
  if (draggedTab_) {
    dragTabTo(event.location.x);
  } else if (!press_->tab) {
    notify(onDrag, offset);
  }
}

void TabStripView::dragTabTo(double x) {
  invalidateDrag();
  if (std::exchange(dragX_, x) != x) invalidateDrag();
}

void TabStripView::mouseUp(const MouseEvent&) {
  if (!press_) return;
  const Press press = *press_;
  const bool dragged = dragging_;
  // Where the tab lands is asked anew: tabs may have come and gone since the last drag event.
  std::optional<std::size_t> drop;
  if (const auto draggedIndex = indexOf(draggedTab_)) drop = geometry().dropIndex(*draggedIndex, dragX_);
  endPress();

  if (!press.tab) {
    if (dragged) notify(onDragEnd);
    return;
  }
  const WindowId id = press.tab->id;
  if (!indexOf(id)) return;
  if (drop) {
    notify(onReorder, id, static_cast<int>(*drop));
  } else if (!dragged) {
    notify(press.close ? onClose : onSelect, id);
  }
}

void TabStripView::endPress() {
  if (const auto dragged = indexOf(draggedTab_)) {
    invalidateDrag();
    invalidateTab(geometry(), dragged);
  }
  press_.reset();
  dragging_ = false;
  draggedTab_.reset();
}

void TabStripView::abandonPress() {
  if (!press_) return;
  const bool draggedStrip = dragging_ && !press_->tab;
  endPress();
  if (draggedStrip) notify(onDragEnd);
}

void TabStripView::rightMouseDown(const MouseEvent& event) {
  if (const auto id = idUnder(event.location)) notify(onMenu, *id, event);
}

void TabStripView::otherMouseDown(const MouseEvent& event) {
  if (const auto id = idUnder(event.location)) notify(onClose, *id);
}

void TabStripView::mouseMoved(const MouseEvent& event) {
  const StripLayout layout = geometry();
  const StripHit hit = layout.hit(event.location);
  updateTabHover(layout, hit.tab);
  updateZoomHover(hit.action == StripAction::zoom);
}

void TabStripView::mouseExited() {
  updateTabHover(geometry(), std::nullopt);
  updateZoomHover(false);
}

AccessibleElement TabStripView::accessibleElement() const {
  return describeStrip(geometry(), tabs_, autoSaveOn_);
}

bool TabStripView::perform(AccessibleAction action, const std::string& id) {
  const auto target = stripTarget(id, geometry(), tabs_);
  if (!target) return false;
  const ViewPoint middle{target->frame.midX(), target->frame.midY()};
  const auto place = host_.toScreen(target->frame);
  if (!place) return false;
  const MouseEvent event{.location = middle, .screenLocation = {place->midX(), place->midY()}};
  if (action == AccessibleAction::showMenu) {
    if (!target->hit.tab || target->hit.close) return false;
    notify(onMenu, tabs_[*target->hit.tab].id, event);
    return true;
  }
  abandonPress();
  const auto alive = alive_.watch();
  mouseDownOn(target->hit, event);
  if (alive) mouseUp(event);
  return true;
}

void TabStripView::updateTabHover(const StripLayout& layout, std::optional<std::size_t> under) {
  std::optional<WindowId> id;
  if (under) id = tabs_[*under].id;
  if (id == hoveredTab_) return;
  invalidateTab(layout, indexOf(hoveredTab_));
  invalidateTab(layout, under);
  hoveredTab_ = id;
  const auto rect = under ? host_.toScreen(layout.tabRect(*under)) : std::nullopt;
  if (rect) {
    notify(onTabHover, id, rect);
  } else {
    notify(onTabHover, std::nullopt, std::nullopt);
  }
}

void TabStripView::updateZoomHover(bool over) {
  if (std::exchange(zoomHovered_, over) == over) return;
  std::optional<ScreenRect> rect;
  if (over) {
    if (const auto tool = geometry().toolRect(StripAction::zoom)) rect = host_.toScreen(*tool);
  }
  notify(onZoomHover, rect);
}

std::optional<std::size_t> TabStripView::indexOf(std::optional<WindowId> id) const {
  if (!id) return std::nullopt;
  const auto found = std::ranges::find(tabs_, *id, &TabItem::id);
  if (found == tabs_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - tabs_.begin());
}

std::optional<WindowId> TabStripView::idUnder(ViewPoint point) const {
  const StripHit hit = geometry().hit(point);
  if (!hit.tab) return std::nullopt;
  return tabs_[*hit.tab].id;
}

void TabStripView::invalidateEverything() {
  host_.accessibleElementChanged();
  host_.setNeedsLayout();
  host_.setNeedsDisplay();
}

void TabStripView::invalidate(const ViewRect& rect) {
  if (const auto visible = rect.intersection(host_.bounds())) host_.setNeedsDisplay(*visible);
}

void TabStripView::invalidateTab(const StripLayout& layout, std::optional<std::size_t> index) {
  if (index) invalidate(layout.tabRect(*index));
}

void TabStripView::invalidateDrag() {
  const auto dragged = indexOf(draggedTab_);
  if (!dragged) return;
  const StripLayout layout = geometry();
  invalidate(layout.movedTabRect(*dragged, dragX_));
  invalidate(layout.dropMarker(*dragged, layout.dropIndex(*dragged, dragX_)));
}

}  // namespace pellar
