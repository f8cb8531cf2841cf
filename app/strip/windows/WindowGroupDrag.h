#pragma once

#include <memory>
#include <vector>

#include "app/tracking/OfficeWindow.h"
#include "core/Geometry.h"
#include "platform/Accessibility.h"

namespace pellar {

// One drag of the front window together with the windows stacked exactly behind it. Windows move from where
// they were when the drag began, so nothing is read meanwhile.
class WindowGroupDrag {
 public:
  [[nodiscard]] bool active() const { return members_ != nullptr; }

  // Takes the snapshot: `front`, then every other window shown that is aligned with it.
  void begin(const std::shared_ptr<OfficeWindow>& front, const WindowList& windows);

  // Moves every window of the snapshot to its start plus `offset` (y upward). A drag is on.
  void moveBy(Accessibility& accessibility, ScreenPoint offset);

  // The window that was in front when the drag began; null while none is on.
  [[nodiscard]] std::shared_ptr<OfficeWindow> front() const {
    return members_ ? members_->front().window : nullptr;
  }

  void end() { members_.reset(); }

 private:
  struct Member {
    std::shared_ptr<OfficeWindow> window;
    AxRect start;
  };
  // Shared, because a write may deliver the event that ends the drag. Never empty while a drag is on.
  std::shared_ptr<const std::vector<Member>> members_;
};

}  // namespace pellar
