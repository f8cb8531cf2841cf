#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

#include "tests/e2e/Desktop.h"

namespace pellar::e2e {

// One tab as it is seen on the screen.
struct SeenTab {
  int marker = 0;       // middle of its coloured marker, in pixels from the strip's left edge
  bool active = false;  // its background is the bright one
};

// The tools before the window buttons, from the right. A strip without room for them shows `more` in place of
// the first.
enum class StripTool { newDocument, groups, closeAll, saveAll, autoSave, more = newDocument };

// The buttons at the strip's right end.
enum class WindowButton { minimise, zoom, close };

// The strip as somebody before the screen sees and uses it.
class Strip {
 public:
  static constexpr int height = 32;  // points

  explicit Strip(Desktop& desktop) : desktop_(desktop) {}

  // How many pixels a point has where the strip is expected; 1 at first.
  void setScale(double scale) { scale_ = scale; }
  [[nodiscard]] int pixels(double points) const { return static_cast<int>(std::lround(points * scale_)); }

  // The strip's window, while it is shown.
  [[nodiscard]] std::optional<xcb_window_t> window();
  [[nodiscard]] std::optional<Box> box();
  // All windows that belong to Pellar, shown or not.
  [[nodiscard]] std::vector<xcb_window_t> allWindows();
  // The tabs from left to right.
  [[nodiscard]] std::vector<SeenTab> tabs();
  [[nodiscard]] std::optional<std::size_t> activeTab();
  // The left edge of the line that shows where a dragged tab will land, in pixels from the strip's left edge;
  // absent while no tab is dragged.
  [[nodiscard]] std::optional<int> dropMarker();

  // Whether its bottom edge is on the window's top edge, within a pixel, and it is as wide as the window.
  [[nodiscard]] bool isOver(Window window);
  // That, with the window being the active one.
  void waitUntilOver(Window window);
  void waitUntilHidden();
  void waitUntilTabs(std::size_t count);

  // Moves the pointer there and leaves it.
  void pointAtTab(std::size_t index);
  void pointAtWindowButton(WindowButton button);
  void clickTab(std::size_t index, int button = 1);
  // Needs two tabs or more: their distance tells where a tab ends.
  void clickCloseMark(std::size_t index);
  void clickWindowButton(WindowButton button);
  void clickTool(StripTool tool);
  // The colour of the bar below a tab's label, 0x00RRGGBB; absent while it has none.
  [[nodiscard]] std::optional<std::uint32_t> tagBar(std::size_t index);
  // The tool right behind the tabs: the magnifier where the search field is folded. Needs two tabs or more.
  void clickFirstTool();
  // Clicks one tab after another; the windows that became active, in that order.
  std::vector<Window> windowsBehindTabs(const std::vector<Window>& candidates);
  void dragTab(std::size_t from, std::size_t to);
  // The two halves of it: takes a tab there and keeps the mouse button down; lets go. Each waits until it is
  // seen.
  void holdTab(std::size_t from, std::size_t to);
  void dropTab();
  // Drags the strip by the room between its last tab and its first tool. Needs two tabs or more.
  void dragEmptyPart(int byX, int byY);

  // Where the last tab ends, in pixels from the strip's left edge. Needs two tabs or more.
  [[nodiscard]] int endOfTabs() { return endOfTab(tabs().size() - 1); }

 private:
  // Clicks so many pixels from the strip's left end.
  void clickAt(int x, int button = 1);
  [[nodiscard]] bool isOurs(xcb_window_t window);
  [[nodiscard]] SeenTab tab(std::size_t index);
  [[nodiscard]] Box shownBox();
  // The middle of one, in pixels from the strip's left edge.
  [[nodiscard]] int placeOf(WindowButton button);
  void pointAt(int x);
  // The right edge of a tab, in pixels from the strip's left edge.
  [[nodiscard]] int endOfTab(std::size_t index);

  Desktop& desktop_;
  double scale_ = 1;
};

}  // namespace pellar::e2e
