#include "tests/e2e/PopUpMenu.h"

#include <stdexcept>
#include <string>

#include "tests/e2e/Keys.h"
#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

const std::string menuClass("pellar\0pellar\0", 14);

// The toolkit's colour behind a marked row.
bool isMark(std::uint32_t pixel) {
  const auto red = static_cast<int>(pixel >> 16 & 255);
  const auto blue = static_cast<int>(pixel & 255);
  return blue > 150 && blue - red > 100;
}

}  // namespace

std::vector<xcb_window_t> PopUpMenu::windows() {
  auto& observer = desktop_.observer();
  auto all = observer.topLevels();
  std::erase_if(all, [&](xcb_window_t window) {
    // Unlike its panels, they are the toolkit's; unlike its other windows, the window manager's hands are
    // off.
    return observer.text(window, "WM_CLASS") != menuClass ||
           observer.numbers(window, "_NET_WM_PID") != std::vector{static_cast<std::uint32_t>(pellar_)} ||
           !observer.isViewable(window);
  });
  return all;
}

void PopUpMenu::waitUntilOpen(std::size_t count) {
  desktop_.observer().waitUntil(std::to_string(count) + " menus are open", [&] {
    if (windows().size() != count) return false;
    const bool open = count > 0;
    auto& observer = desktop_.observer();
    return observer.keyboardIsGrabbed() == open && observer.pointerIsGrabbed() == open;
  });
}

Box PopUpMenu::box(std::size_t index) {
  const auto box = desktop_.observer().box(windows().at(index));
  if (!box) throw std::runtime_error("the menu is gone");
  return *box;
}

std::optional<Box> PopUpMenu::marked() {
  const auto all = windows();
  if (all.empty()) return std::nullopt;
  const auto place = desktop_.observer().box(all.back());
  const auto picture = desktop_.observer().picture(all.back());
  if (!place || !picture) return std::nullopt;
  const int x = picture->width / 2;
  const auto isMarked = [&](int y) { return isMark(picture->at(4, y)) || isMark(picture->at(x, y)); };
  int top = 0;
  while (top < picture->height && !isMarked(top)) ++top;
  int bottom = top;
  while (bottom < picture->height && isMarked(bottom)) ++bottom;
  if (top == bottom) return std::nullopt;
  return Box{place->x, place->y + top, place->width, bottom - top};
}

void PopUpMenu::stepTo(int place) {
  auto before = marked();
  for (int step = 0; step < place; ++step) {
    desktop_.observer().strike(downKey);
    desktop_.observer().waitUntil("the next item is marked", [&] {
      const auto now = marked();
      return now && now != before;
    });
    before = marked();
  }
}

void PopUpMenu::choose(int place) {
  stepTo(place);
  desktop_.observer().strike(returnKey);
}

void PopUpMenu::openSubmenu(int place) {
  const auto count = windows().size();
  stepTo(place);
  desktop_.observer().strike(rightKey);
  waitUntilOpen(count + 1);
  desktop_.observer().waitUntil("its first item is marked", [this] { return marked().has_value(); });
}

void PopUpMenu::click(int place) {
  stepTo(place);
  const auto row = marked();
  if (!row) throw std::runtime_error("no item is marked");
  desktop_.observer().click(row->x + row->width / 2, row->y + row->height / 2);
}

}  // namespace pellar::e2e
