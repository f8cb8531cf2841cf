#include "tests/e2e/RecentPanel.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace pellar::e2e {

namespace {

constexpr int panelWidth = 480;
constexpr int panelHeight = 300;
constexpr int left = 10;
constexpr int top = 8;
constexpr int rowHeight = 34;
constexpr int wholeRows = (panelHeight - 2 * top) / rowHeight;
// Where a row has no text as long as names are short.
constexpr int besideText = panelWidth - 60;

constexpr int shortestField = 190;
constexpr int longestField = 210;
// A row of pixels that crosses the field's ground but no text, and one above it.
constexpr int throughField = 8;

bool isBlue(std::uint32_t pixel) {
  return (pixel & 255) > 180 && (pixel >> 16 & 255) < 80;
}

int middleOf(int row) {
  return top + row * rowHeight + rowHeight / 2;
}

}  // namespace

std::optional<xcb_window_t> RecentPanel::window() {
  for (const auto each : strip_.allWindows()) {
    const auto box = desktop_.observer().box(each);
    if (box && box->width == pixels(panelWidth) && box->height == pixels(panelHeight) &&
        desktop_.observer().isViewable(each))
      return each;
  }
  return std::nullopt;
}

Box RecentPanel::place() {
  const auto shown = window();
  const auto box = shown ? desktop_.observer().box(*shown) : std::nullopt;
  if (!box) throw std::runtime_error("no list of recent files to use");
  return *box;
}

std::optional<Box> RecentPanel::field() {
  const auto shown = strip_.window();
  const auto place = strip_.box();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  if (!place || !picture || picture->height != pixels(Strip::height)) return std::nullopt;
  const int row = pixels(throughField);
  std::optional<Box> found;
  for (int x = 0; x < picture->width;) {
    int end = x + 1;
    while (end < picture->width && picture->at(end, row) == picture->at(x, row)) ++end;
    const bool brighter = brightness(picture->at(x, row)) > brightness(picture->at(x, pixels(2)));
    if (brighter && end - x >= pixels(shortestField) && end - x <= pixels(longestField))
      found = Box{place->x + x, place->y + pixels(5), end - x, pixels(22)};
    x = end;
  }
  return found;
}

bool RecentPanel::hasEditor() {
  const auto shown = strip_.window();
  if (!shown) return false;
  const auto children = desktop_.observer().childrenOf(*shown);
  return std::ranges::any_of(children,
                             [this](xcb_window_t child) { return desktop_.observer().isViewable(child); });
}

bool RecentPanel::fieldHasCursor() {
  const auto shown = strip_.window();
  const auto place = strip_.box();
  const auto box = field();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  if (!place || !box || !picture) return false;
  // The cursor is a line that is as high as the text, where an empty field's text begins.
  const int first = pixels(18);
  const int last = pixels(34);
  const int middle = pixels(Strip::height) / 2;
  for (int x = box->x - place->x + first; x < box->x - place->x + last; ++x) {
    int y = middle - pixels(4);
    while (y < middle + pixels(4) && brightness(picture->at(x, y)) >= 170) ++y;
    if (y == middle + pixels(4)) return true;
  }
  return false;
}

void RecentPanel::openByClickOnTheField() {
  std::optional<Box> seen;
  desktop_.observer().waitUntil("the search field is there", [&] { return (seen = field()).has_value(); });
  desktop_.observer().click(seen->x + seen->width / 2, seen->y + seen->height / 2);
  waitUntilOpen();
}

void RecentPanel::openByClickOnTheMagnifier() {
  strip_.clickFirstTool();
  waitUntilOpen();
}

void RecentPanel::waitUntilOpen() {
  desktop_.observer().waitUntil("the list of recent files is open", [this] { return isOpen(); });
  // It is painted only after it has taken the keyboard.
  desktop_.observer().waitUntil("the search field has the keys", [this] { return fieldHasCursor(); });
}

void RecentPanel::waitUntilClosed() {
  desktop_.observer().waitUntil("the list of recent files is closed", [this] { return !isOpen(); });
  // It goes only after it has given the keyboard up.
  desktop_.observer().waitUntil("the search field has no keys", [this] { return !hasEditor(); });
}

int RecentPanel::rows() {
  const auto shown = window();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  if (!picture) return 0;
  const auto hasTitle = [&](int row) {
    for (int y = pixels(top + row * rowHeight + 2); y < pixels(top + row * rowHeight + 16); ++y) {
      for (int x = pixels(left + 4); x < pixels(besideText); ++x)
        if (brightness(picture->at(x, y)) >= 170) return true;
    }
    return false;
  };
  int count = 0;
  while (count < wholeRows && hasTitle(count)) ++count;
  return count;
}

std::optional<int> RecentPanel::selectedRow() {
  const auto shown = window();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  if (!picture) return std::nullopt;
  for (int row = 0; row < wholeRows; ++row)
    if (isBlue(picture->at(pixels(besideText), pixels(middleOf(row))))) return row;
  return std::nullopt;
}

void RecentPanel::waitUntilRows(int count) {
  int seen = 0;
  try {
    desktop_.observer().waitUntil(std::to_string(count) + " files are listed", [&] {
      seen = rows();
      return isOpen() && seen == count;
    });
  } catch (const DeadlineMissed& missed) {
    throw DeadlineMissed(std::string(missed.what()) + "; there are " + std::to_string(seen));
  }
}

void RecentPanel::waitUntilSelected(std::optional<int> row) {
  desktop_.observer().waitUntil("row " + (row ? std::to_string(*row) : "none") + " is selected",
                                [&] { return isOpen() && selectedRow() == row; });
}

void RecentPanel::clickRow(int row) {
  const auto box = place();
  desktop_.observer().click(box.x + pixels(besideText), box.y + pixels(middleOf(row)));
}

void RecentPanel::doubleClickRow(int row) {
  clickRow(row);
  clickRow(row);
}

void RecentPanel::clickLastRowInSight() {
  const auto box = place();
  desktop_.observer().click(box.x + pixels(besideText), box.y + box.height - pixels(top + rowHeight / 2.0));
}

void RecentPanel::turnWheel(int notches) {
  const auto box = place();
  for (int i = 0; i < std::abs(notches); ++i)
    desktop_.observer().click(box.x + box.width / 2, box.y + box.height / 2, notches > 0 ? 5 : 4);
}

}  // namespace pellar::e2e
