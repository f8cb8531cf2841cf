#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/sim/SimMac.h"

namespace pellar {

// Where windows stand, in Accessibility coordinates. A frame changes by what the world does to its window, by
// what the user asked of the strip, and to make room for the strip above the window in front; by nothing
// else.
class FrameWatch {
 public:
  using Windows = std::vector<SimWindow>;

  explicit FrameWatch(SimMac& mac) : mac_(mac) {}

  // What is done, told before the program comes to rest.

  // The program was started, and knows of no frame from before a zoom.
  void started();
  void happened() { ++happenings_; }
  // The world did something to this window.
  void touched(const SimWindow& window) { touched_.insert(window.id()); }
  // Windows of an application that came to the front, if only for a moment: room may have been made above
  // one.
  void wasInFront(const Windows& windows) {
    for (const auto& each : windows) passedBy_.insert(each.id());
  }
  // Only what is seen tells where windows are, and which of them are zoomed.
  void becomeUnsure() { isUnsure_ = true; }
  // Whether no more than one thing happened since the last rest, in a way that leaves no doubt.
  [[nodiscard]] bool isSingle() const { return happenings_ <= 1 && !isUnsure_; }

  // What the user asked for just now, with the frame that the window had before.

  void zoomed(const SimWindow& window, const AxRect& before);
  // By the title of the tile.
  void tiled(const SimWindow& window, const AxRect& before, const std::string& tile);
  // The strip was dragged, in points of the screen; the frames of all windows with a tab as they were, the
  // front one first.
  void dragged(const std::vector<std::pair<SimWindow, AxRect>>& tabbed, ScreenPoint offset);

  // At a rest: what is wrong. Room may have been made above those that may have been in front.
  [[nodiscard]] std::optional<std::string> compare(const std::vector<SimApplication>& applications,
                                                   const Windows& fronts);

 private:
  struct Zoom {
    AxRect before;
    AxRect area;
    AxRect after;
  };
  struct Stand {
    AxRect frame;
    bool isZoomKnown = true;
    std::optional<Zoom> zoom;
  };

  [[nodiscard]] static bool isJudged(const SimWindow& window);
  [[nodiscard]] Stand& standOf(const SimWindow& window);
  // What comes of a request for a place, and for a frame.
  [[nodiscard]] AxPoint placed(const SimWindow& window, const AxRect& from, const AxRect& wanted) const;
  [[nodiscard]] AxRect settled(const SimWindow& window, const AxRect& from, const AxRect& wanted) const;
  // Of the screen that such a window is on; absent without any.
  [[nodiscard]] std::optional<AxRect> visibleFrameAt(const AxRect& window) const;
  // What zoomed windows fill, and tiles divide.
  [[nodiscard]] AxRect areaOf(const AxRect& window) const;
  [[nodiscard]] bool isRoomMade(const SimWindow& window, const AxRect& expected, const AxRect& now) const;

  SimMac& mac_;
  std::map<WindowId, Stand> stands_;     // at the last rest
  std::map<WindowId, AxRect> expected_;  // what the user asked for since then
  std::set<WindowId> touched_;           // since then
  std::set<WindowId> wereInFront_;       // at the last rest
  std::set<WindowId> passedBy_;          // in front for a moment since then
  std::vector<Screen> screens_;          // at the last rest
  std::size_t happenings_ = 0;           // since then
  bool isUnsure_ = true;
};

}  // namespace pellar
