#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "app/tracking/OfficeWindow.h"

namespace pellar {

// The order of one application's tabs. It keeps the place, and the record, of a window that its application
// does not name at the moment because it is on another space, so that a glance there changes nothing. Main
// thread only.
class TabOrder {
 public:
  // The records it keeps, in order.
  [[nodiscard]] const WindowList& windows() const { return windows_; }

  // Puts the windows that have a tab now into order: those known keep theirs, new ones follow in the order
  // given.
  [[nodiscard]] WindowList arrange(WindowList windows);

  // Moves a window among the windows `others`, which are in this order, so that it comes to `index` there;
  // 0 ... the number of others. Gives the new order of them all.
  [[nodiscard]] WindowList move(const std::shared_ptr<OfficeWindow>& window, const WindowList& others,
                                std::ptrdiff_t index);

  // A window that comes again is a new one.
  void forget(const std::shared_ptr<OfficeWindow>& window);
  void forgetAll();

 private:
  WindowList windows_;
};

}  // namespace pellar
