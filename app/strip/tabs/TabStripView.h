#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/strip/tabs/StripAction.h"
#include "app/strip/tabs/StripLayout.h"
#include "app/strip/tabs/TabItem.h"
#include "core/Alive.h"
#include "core/Geometry.h"
#include "core/Notify.h"
#include "platform/View.h"

namespace pellar {

// The strip's view: tabs, tools and the search field. It knows nothing of windows or files; every gesture
// leaves it as a callback. Every rectangle is computed anew from the bounds on each use. Main thread only.
class TabStripView final : public View {
 public:
  explicit TabStripView(ViewHost& host);
  ~TabStripView() override;

  // A gesture without a callback set is skipped. Rectangles are on the screen.
  std::function<void(WindowId)> onSelect;
  std::function<void(WindowId)> onClose;
  std::function<void(WindowId, const MouseEvent&)> onMenu;
  std::function<void(StripAction, const MouseEvent&)> onAction;
  std::function<void(std::optional<ScreenRect> zoomTool)> onZoomHover;
  std::function<void(WindowId, int index)> onReorder;  // index among the other tabs
  std::function<void(ScreenPoint offset)> onDrag;      // from the press point, y upward
  std::function<void()> onDragEnd;
  std::function<void(std::optional<WindowId>, std::optional<ScreenRect> tab)> onTabHover;
  std::function<void(std::optional<WindowId>)> onDraggedOver;  // a file is, over this tab or none

  // Setters ask for layout and for a redraw of just what changed.
  void setTabs(std::vector<TabItem> tabs);
  void setSearchExpanded(bool expanded);  // the user opened the search; suppresses its compact form
  void setOfficeTools(bool shown);        // document tools and search are offered
  void setRenameTool(bool shown);
  void setAccent(const Color& accent);
  void setAutoSaveOn(bool on);

  // Ends a press whose release will not come, because another grab took it or the strip leaves the screen: a
  // drag of the strip ends, a tab stays where it was.
  void abandonPress();

  [[nodiscard]] const std::vector<TabItem>& tabs() const { return tabs_; }
  [[nodiscard]] SearchField& searchField() { return *search_; }
  // Where everything lies now.
  [[nodiscard]] StripLayout geometry() const;

  void layout() override;
  void draw(Canvas& canvas, const ViewRect& dirty) override;
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent& event) override;
  void mouseUp(const MouseEvent& event) override;
  void rightMouseDown(const MouseEvent& event) override;
  void otherMouseDown(const MouseEvent& event) override;
  void mouseEntered() override {}
  void mouseMoved(const MouseEvent& event) override;
  void mouseExited() override;
  void draggingUpdated(ViewPoint location) override { notify(onDraggedOver, idUnder(location)); }
  void draggingExited() override { notify(onDraggedOver, std::nullopt); }
  [[nodiscard]] AccessibleElement accessibleElement() const override;
  bool perform(AccessibleAction action, const std::string& id) override;

 private:
  // The tab a press began on. Reports may move or take tabs away before the release, so the id decides.
  struct PressedTab {
    std::size_t index = 0;
    WindowId id = 0;
  };
  struct Press {
    ScreenPoint location;
    std::optional<PressedTab> tab;  // absent on the empty strip
    bool close = false;
  };

  [[nodiscard]] std::optional<std::size_t> indexOf(std::optional<WindowId> id) const;
  [[nodiscard]] std::optional<WindowId> idUnder(ViewPoint point) const;
  void mouseDownOn(const StripHit& hit, const MouseEvent& event);
  void beginPress(const MouseEvent& event, const StripHit& hit);
  void endPress();
  void dragTabTo(double x);
  void updateTabHover(const StripLayout& layout, std::optional<std::size_t> under);
  void updateZoomHover(bool over);
  void invalidateEverything();
  void invalidate(const ViewRect& rect);
  void invalidateTab(const StripLayout& layout, std::optional<std::size_t> index);
  void invalidateDrag();

  ViewHost& host_;
  std::vector<TabItem> tabs_;
  bool searchExpanded_ = false;
  bool officeTools_ = true;
  bool renameTool_ = true;
  Color accent_ = Color::of(SystemColor::blue);
  bool autoSaveOn_ = false;
  bool zoomHovered_ = false;
  std::optional<Press> press_;
  // What the first press of a double click met may have gone before the second one comes.
  bool lastPressMetEmptyStrip_ = false;
  bool dragging_ = false;
  std::optional<WindowId> draggedTab_;
  double dragX_ = 0;  // the pointer's, view coordinates, while a tab is dragged
  std::unique_ptr<SearchField> search_;
  std::optional<WindowId> hoveredTab_;
  Alive alive_;
};

}  // namespace pellar
