#include "tests/e2e/Strip.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>

namespace pellar::e2e {

namespace {

std::array<int, 3> channels(std::uint32_t pixel) {
  return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
          static_cast<int>(pixel & 255)};
}

bool colourful(std::uint32_t pixel) {
  const auto [least, most] = std::ranges::minmax(channels(pixel));
  return most - least >= 40;
}

// What tells a tab's marker from text: a run of one strong colour nine pixels long, or eight between two
// blended ones.
constexpr int shortestMarker = 7;
constexpr int longestMarker = 10;
constexpr int tabTop = 3;
// From a tab's left edge to the middle of its marker, between two tabs, and from its right edge to its close
// mark.
constexpr int markerInset = 13;
constexpr int tabGap = 4;
constexpr int closeMarkInset = 13;
// From the strip's right edge to the middle of its first window button, and on to the next.
constexpr int firstWindowButton = 85;
constexpr int windowButtonPitch = 32;

}  // namespace

bool Strip::isOurs(xcb_window_t window) {
  static const std::string wanted = std::string("pellar") + '\0' + "Pellar" + '\0';
  return desktop_.observer().text(window, "WM_CLASS") == wanted;
}

std::vector<xcb_window_t> Strip::allWindows() {
  auto all = desktop_.observer().topLevels();
  std::erase_if(all, [this](xcb_window_t window) { return !isOurs(window); });
  return all;
}

std::optional<xcb_window_t> Strip::window() {
  for (const auto window : allWindows()) {
    const auto place = desktop_.observer().box(window);
    if (place && place->height == pixels(height) && desktop_.observer().isViewable(window)) return window;
  }
  return std::nullopt;
}

std::optional<Box> Strip::box() {
  const auto shown = window();
  return shown ? desktop_.observer().box(*shown) : std::nullopt;
}

std::vector<SeenTab> Strip::tabs() {
  const auto shown = window();
  if (!shown) return {};
  const auto picture = desktop_.observer().picture(*shown);
  if (!picture || picture->height != pixels(height)) return {};
  std::vector<SeenTab> result;
  const int middle = pixels(height) / 2;
  for (int x = 0; x < picture->width;) {
    int end = x + 1;
    while (end < picture->width && picture->at(end, middle) == picture->at(x, middle)) ++end;
    const int length = end - x;
    if (colourful(picture->at(x, middle)) && length >= pixels(shortestMarker) &&
        length <= pixels(longestMarker) && x >= 4) {
      const int beside = x - pixels(3);
      const int difference =
          brightness(picture->at(beside, middle)) - brightness(picture->at(beside, pixels(tabTop - 2)));
      result.push_back({x + length / 2, difference >= 30});
    }
    x = end;
  }
  return result;
}

std::optional<std::size_t> Strip::activeTab() {
  const auto all = tabs();
  const auto found = std::ranges::find_if(all, &SeenTab::active);
  if (found == all.end()) return std::nullopt;
  return static_cast<std::size_t>(found - all.begin());
}

bool Strip::isOver(Window window) {
  const auto place = box();
  const auto frame = desktop_.observer().frame(window.id);
  return place && frame && std::abs(place->y + place->height - frame->y) <= 1 &&
         std::abs(place->x - frame->x) <= 1 && std::abs(place->width - frame->width) <= 1;
}

void Strip::waitUntilOver(Window window) {
  try {
    desktop_.observer().waitUntil("the strip is over the window",
                                  [&] { return desktop_.isActive(window) && isOver(window); });
  } catch (const DeadlineMissed& missed) {
    const auto place = box();
    const auto frame = desktop_.observer().frame(window.id);
    throw DeadlineMissed(std::string(missed.what()) + "; the strip is " +
                         (place ? "at " + describe(*place) : "hidden") + ", the window " +
                         (frame ? "at " + describe(*frame) : "gone") +
                         (desktop_.isActive(window) ? " and active" : " and not active"));
  }
}

void Strip::waitUntilHidden() {
  desktop_.observer().waitUntil("the strip is hidden", [this] { return !window().has_value(); });
}

void Strip::waitUntilTabs(std::size_t count) {
  std::size_t seen = 0;
  try {
    desktop_.observer().waitUntil("the strip shows " + std::to_string(count) + " tabs", [&] {
      seen = tabs().size();
      return seen == count;
    });
  } catch (const DeadlineMissed& missed) {
    throw DeadlineMissed(std::string(missed.what()) + "; it shows " + std::to_string(seen));
  }
}

SeenTab Strip::tab(std::size_t index) {
  const auto all = tabs();
  if (index >= all.size()) {
    throw std::runtime_error("no tab " + std::to_string(index) + " among " + std::to_string(all.size()));
  }
  return all[index];
}

std::optional<int> Strip::dropMarker() {
  const auto shown = window();
  if (!shown) return std::nullopt;
  const auto picture = desktop_.observer().picture(*shown);
  if (!picture || picture->height != pixels(height)) return std::nullopt;
  // A line that high and that bright is nothing else: tabs are not white, and text is lower.
  const int top = pixels(7);
  const int bottom = pixels(height) - top;
  constexpr int brightest = 200;
  for (int x = 0; x < picture->width; ++x) {
    int y = top;
    while (y < bottom && brightness(picture->at(x, y)) >= brightest) ++y;
    if (y == bottom) return x;
  }
  return std::nullopt;
}

Box Strip::shownBox() {
  const auto place = box();
  if (!place) throw std::runtime_error("no strip to use");
  return *place;
}

int Strip::endOfTab(std::size_t index) {
  const auto all = tabs();
  if (all.size() < 2 || index >= all.size())
    throw std::runtime_error("no telling where tab " + std::to_string(index) + " of " +
                             std::to_string(all.size()) + " ends");
  return all[index].marker - pixels(markerInset) + all[1].marker - all[0].marker - pixels(tabGap);
}

void Strip::clickAt(int x, int button) {
  Box place;
  int y = 0;
  // The card of a tab stays for a moment, and may stand over the strip of the next window; the strip may be
  // on its way with a window that its window manager shows again step by step.
  desktop_.observer().waitUntil("nothing covers the strip where it is to be clicked", [&] {
    const auto shown = window();
    const auto now = shown ? desktop_.observer().box(*shown) : std::nullopt;
    // One above the screen is about to come down, with the window that makes room for it.
    if (!now || now->y < 0) return false;
    place = *now;
    y = place.y + pixels(height) / 2;
    return desktop_.observer().topLevelAt(place.x + x, y) == *shown;
  });
  desktop_.observer().click(place.x + x, y, button);
}

void Strip::pointAt(int x) {
  const auto place = shownBox();
  desktop_.observer().movePointer(place.x + x, place.y + pixels(height) / 2);
}

void Strip::pointAtTab(std::size_t index) {
  pointAt(tab(index).marker);
}

void Strip::pointAtWindowButton(WindowButton button) {
  pointAt(placeOf(button));
}

void Strip::clickTab(std::size_t index, int button) {
  clickAt(tab(index).marker, button);
}

void Strip::clickCloseMark(std::size_t index) {
  clickAt(endOfTab(index) - pixels(closeMarkInset));
}

int Strip::placeOf(WindowButton button) {
  return shownBox().width - pixels(firstWindowButton) + pixels(windowButtonPitch) * static_cast<int>(button);
}

void Strip::clickWindowButton(WindowButton button) {
  clickAt(placeOf(button));
}

void Strip::clickFirstTool() {
  const auto shown = window();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  if (!picture) throw std::runtime_error("no strip to look at");
  constexpr int bright = 110;
  for (int x = endOfTab(tabs().size() - 1) + pixels(tabGap); x < picture->width; ++x) {
    for (int y = pixels(height) / 4; y < pixels(height) * 3 / 4; ++y) {
      if (brightness(picture->at(x, y)) < bright) continue;
      clickAt(x + pixels(5));
      return;
    }
  }
  throw std::runtime_error("no tool on the strip");
}

void Strip::clickTool(StripTool tool) {
  const auto place = shownBox();
  std::optional<Picture> picture;
  // A tool's text is at least so far from the next one's, and words of one text are nearer.
  const int betweenTools = pixels(12);
  constexpr int writing = 120;
  constexpr int windowButtons = 3;
  const auto isWritten = [&](int x) {
    for (int y = pixels(8); y < pixels(height) - pixels(8); ++y)
      if (brightness(picture->at(x, y)) >= writing) return true;
    return false;
  };
  // A strip that has just changed its width may be drawn for the one before.
  desktop_.observer().waitUntil("the strip is drawn up to its right end", [&] {
    const auto shown = window();
    picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
    const int closeButton = place.width - pixels(firstWindowButton) +
                            static_cast<int>(WindowButton::close) * pixels(windowButtonPitch);
    return picture && picture->width == place.width && isWritten(closeButton) &&
           !isWritten(place.width - pixels(tabGap));
  });
  int skipped = 0;
  const int wanted = windowButtons + static_cast<int>(tool);
  for (int x = picture->width - pixels(tabTop); x > 0; --x) {
    if (!isWritten(x)) continue;
    int left = x;
    for (int ahead = x; ahead > 0 && left - ahead < betweenTools; --ahead)
      if (isWritten(ahead)) left = ahead;
    if (skipped++ == wanted) return clickAt((left + x) / 2);
    x = left;
  }
  throw std::runtime_error("no such tool in the strip");
}

std::optional<std::uint32_t> Strip::tagBar(std::size_t index) {
  const auto shown = window();
  const auto picture = shown ? desktop_.observer().picture(*shown) : std::nullopt;
  const auto all = tabs();
  if (!picture || index >= all.size()) return std::nullopt;
  const int belowMarker = pixels(23);
  for (int y = pixels(height) - pixels(tabTop); y > belowMarker; --y)
    if (const auto pixel = picture->at(all[index].marker, y); colourful(pixel)) return pixel;
  return std::nullopt;
}

std::vector<Window> Strip::windowsBehindTabs(const std::vector<Window>& candidates) {
  std::vector<Window> result;
  for (std::size_t index = 0; index < candidates.size(); ++index) {
    waitUntilTabs(candidates.size());
    clickTab(index);
    desktop_.observer().waitUntil("tab " + std::to_string(index) + " is the active one",
                                  [&] { return activeTab() == index; });
    const Window active{desktop_.observer().activeWindow()};
    waitUntilOver(active);
    result.push_back(active);
  }
  return result;
}

void Strip::dragTab(std::size_t from, std::size_t to) {
  holdTab(from, to);
  dropTab();
}

void Strip::holdTab(std::size_t from, std::size_t to) {
  if (dropMarker()) throw std::runtime_error("a drop marker although no tab is dragged");
  const auto place = shownBox();
  const auto source = tab(from);
  const auto target = tab(to);
  // Past the middle of the tab it is to stand behind or before.
  const int beyond = to > from ? 1 : -1;
  const auto all = tabs();
  const int pitch = all.size() > 1 ? all[1].marker - all[0].marker : 0;
  const int middleOfTab = pitch / 2 - pixels(markerInset);
  desktop_.dragAndHold(place.x + source.marker, place.y + pixels(height) / 2,
                       place.x + target.marker + middleOfTab + beyond * pixels(6),
                       place.y + pixels(height) / 2);
  desktop_.observer().waitUntil("the drop marker shows where the tab will land",
                                [this] { return dropMarker().has_value(); });
}

void Strip::dropTab() {
  desktop_.observer().release(1);
  desktop_.observer().waitUntil("the drop marker is gone", [this] { return !dropMarker().has_value(); });
}

void Strip::dragEmptyPart(int byX, int byY) {
  const auto place = shownBox();
  const int x = place.x + endOfTab(tabs().size() - 1) + pixels(tabGap) + 1;
  const int y = place.y + pixels(height) / 2;
  desktop_.drag(x, y, x + byX, y + byY);
}

}  // namespace pellar::e2e
