#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Geometry.h"
#include "platform/sim/drawing/Drawing.h"
#include "platform/sim/panel/SimPanels.h"
#include "platform/sim/system/SimScreens.h"
#include "platform/sim/user/SimPointer.h"

namespace pellar {

class StripReader;

// A drag of one tab that waits to be told where to.
class TabDrag {
 public:
  TabDrag(StripReader& reader, int index);
  // Drops it so that it takes this place, counted from 0 in the order that comes of it.
  void to(int index);
  // Drags by a distance in points, y upward.
  void by(double dx, double dy);

 private:
  StripReader& reader_;
  int index_;
};

// Reads the strip as a user does: from what stands on the panel of floating level, and works it with the
// mouse. A tab is known by the label drawn in it; indices count tabs from the left. Naming something that is
// not to be seen throws, with the texts that are.
class StripReader {
 public:
  StripReader(const SimPanels& panels, const SimScreens& screens, SimPointer& pointer);

  [[nodiscard]] bool visible() const { return panel_ != nullptr && panel_->isVisible(); }
  [[nodiscard]] ScreenRect frame() const { return panel().frame(); }
  // The same in Accessibility coordinates.
  [[nodiscard]] AxRect accessibilityFrame() const { return screens_.toAccessibility(frame()); }
  // Labels from left to right; empty for a tab too narrow for one.
  [[nodiscard]] std::vector<std::string> tabs() const;
  // Absent when no tab stands out.
  [[nodiscard]] std::optional<std::string> activeTab() const;
  [[nodiscard]] std::optional<int> activeTabIndex() const;
  // The colour of a tab's tag bar.
  [[nodiscard]] std::optional<Color> tagOf(std::string_view label) const { return tagOf(indexOf(label)); }
  [[nodiscard]] std::optional<Color> tagOf(int index) const;
  // Every text drawn, in painting order.
  [[nodiscard]] std::vector<std::string> texts() const;
  // The texts of the tools from left to right.
  [[nodiscard]] std::vector<std::string> tools() const;
  [[nodiscard]] std::optional<Color> toolColor(std::string_view text) const;
  [[nodiscard]] bool searchToolShown() const;
  // The search field; null when it is not to be seen.
  [[nodiscard]] SimSearchField* searchField() const;
  [[nodiscard]] SimPanel& panel() const;

  void clickTab(std::string_view label) { clickTab(indexOf(label)); }
  void clickTab(int index);
  void closeTab(std::string_view label);
  void middleClickTab(std::string_view label);
  void rightClickTab(std::string_view label);
  void controlClickTab(std::string_view label);
  void hoverTab(std::string_view label);
  [[nodiscard]] TabDrag dragTab(std::string_view label) { return {*this, indexOf(label)}; }
  [[nodiscard]] TabDrag dragTab(int index) { return {*this, index}; }
  void clickTool(std::string_view text);
  void hoverTool(std::string_view text);
  void clickSearchTool();
  void clickSearchField();
  // The widest part of the strip that holds nothing.
  void dragEmptyStrip(double dx, double dy);
  void doubleClickEmptyStrip();
  void rightClickEmptyStrip();

  // Points to give to the pointer.
  [[nodiscard]] ScreenPoint tabPoint(int index) const;
  [[nodiscard]] ScreenPoint tabPoint(std::string_view label) const { return tabPoint(indexOf(label)); }
  [[nodiscard]] ScreenPoint toolPoint(std::string_view text) const;
  [[nodiscard]] ScreenPoint emptyPoint() const;

 private:
  friend class TabDrag;

  struct DrawnTab {
    ViewRect marker;
    double left = 0;
    double right = 0;
    std::optional<DrawnItem> label;
    std::optional<DrawnItem> closeMark;
  };

  [[nodiscard]] const std::vector<DrawnItem>& items() const { return panel().drawing().items(); }
  [[nodiscard]] std::vector<DrawnTab> drawnTabs() const;
  [[nodiscard]] std::vector<DrawnItem> drawnTools() const;
  [[nodiscard]] const DrawnItem& searchSymbol() const;
  [[nodiscard]] DrawnTab tabAt(int index) const;
  [[nodiscard]] int indexOf(std::string_view label) const;
  [[nodiscard]] ScreenPoint toScreen(ViewPoint point) const;
  [[noreturn]] void missing(const std::string& what) const;

  const SimScreens& screens_;
  SimPointer& pointer_;
  SimPanel* panel_ = nullptr;
};

}  // namespace pellar
