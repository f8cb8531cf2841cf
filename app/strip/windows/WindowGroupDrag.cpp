#include "app/strip/windows/WindowGroupDrag.h"

#include <limits>
#include <locale>
#include <sstream>
#include <string>
#include <utility>

#include "core/Log.h"
#include "core/Tile.h"

namespace pellar {
namespace {

// Not std::to_chars, which macOS has for floating point only since 13.3.
std::string numberText(double value) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(std::numeric_limits<double>::digits10);
  text << value;
  return text.str();
}

std::string rectText(const AxRect& rect) {
  return "{{" + numberText(rect.x) + ", " + numberText(rect.y) + "}, {" + numberText(rect.width) + ", " +
         numberText(rect.height) + "}}";
}

}  // namespace

void WindowGroupDrag::begin(const std::shared_ptr<OfficeWindow>& front, const WindowList& windows) {
  std::vector<Member> members{{front, front->frame}};
  for (const auto& window : windows) {
    if (window == front || window->minimized || !shouldAlign(window->frame, front->frame)) continue;
    members.push_back({window, window->frame});
  }
  Log::write("banner drag start: " + std::to_string(members.size()) + " windows from " +
             rectText(front->frame));
  members_ = std::make_shared<const std::vector<Member>>(std::move(members));
}

void WindowGroupDrag::moveBy(Accessibility& accessibility, ScreenPoint offset) {
  const auto members = members_;
  for (const auto& [window, start] : *members) {
    const AxPoint origin{start.x + offset.x, start.y - offset.y};
    // Before the write, in which a report may read what became of it.
    window->frame.x = origin.x;
    window->frame.y = origin.y;
    accessibility.set(window->element, "AXPosition", origin);
  }
}

}  // namespace pellar
