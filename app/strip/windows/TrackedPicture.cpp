#include "app/strip/windows/TrackedPicture.h"

#include <algorithm>

namespace pellar {

std::shared_ptr<OfficeWindow> TrackedPicture::window(WindowId id) const {
  const auto found = std::ranges::find_if(windows, [&](const auto& each) { return each->id() == id; });
  return found == windows.end() ? nullptr : *found;
}

std::shared_ptr<OfficeWindow> TrackedPicture::present(const OfficeWindow& window) const {
  const auto same = this->window(window.id());
  // A new window may come under the number of one that is gone.
  return same && same->element == window.element ? same : nullptr;
}

}  // namespace pellar
