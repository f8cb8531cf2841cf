#pragma once

#include <chrono>
#include <memory>
#include <unordered_map>

#include "app/strip/windows/OpenWindows.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/tracking/WindowTracker.h"
#include "core/Geometry.h"
#include "core/Tile.h"
#include "platform/Platform.h"

namespace pellar {

// What the strip, its menus and its panels do to windows. Each action asks the tracker for the next picture,
// which shows what became of it; on a window that is gone it has no effect. The caller keeps the record
// alive. Main thread only.
class WindowActions {
 public:
  // What `platform` refers to outlives this.
  WindowActions(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                std::shared_ptr<const TrackedPicture> picture);

  // Which windows are still there, for what is chosen after a nested loop.
  [[nodiscard]] const OpenWindows& windows() const { return windows_; }

  // Has the tracker report the windows there are now: while a menu is open nothing is heard of them.
  void lookAgain();

  // Makes it the focused window: out of the Dock, in front, its application in front.
  void raise(const OfficeWindow& window);
  // Puts it into the Dock.
  void minimize(const OfficeWindow& window);
  // Presses the close button; the application may still ask about unsaved changes.
  void close(const OfficeWindow& window);
  // The same for each that has a close button.
  void close(const WindowList& windows);
  // Fills the area that the strip leaves of the window's screen, or gives back the frame it had before.
  void zoom(OfficeWindow& window);
  // The picture is another one now: a window that was just zoomed may have answered late.
  void pictureChanged();
  // Puts the window on a part of that area, and raises it.
  void tile(OfficeWindow& window, Tile tile);

 private:
  // A window that was zoomed: where it was, the area it was to fill, and what it took of that.
  struct Zoomed {
    Element window;
    AxRect before;
    AxRect area;
    AxRect after;
    std::chrono::nanoseconds at;  // uptime
  };

  // Whether the window fills the area, or stands as zooming to that area left it.
  [[nodiscard]] static bool isZoomed(const OfficeWindow& window, const Zoomed& zoomed, const AxRect& area);

  Platform platform_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<const TrackedPicture> picture_;
  OpenWindows windows_;
  std::unordered_map<WindowId, Zoomed> zoomed_;
};

}  // namespace pellar
