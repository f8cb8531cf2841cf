#pragma once

#include <memory>
#include <utility>

namespace pellar {

// A callback that calls `action` with the object and what it is called with itself: it keeps the object alive
// while it runs, and does nothing once the object is gone.
template <class Object, class Action>
auto weakly(std::weak_ptr<Object> object, Action action) {
  return [object = std::move(object), action = std::move(action)](const auto&... arguments) {
    if (const auto alive = object.lock()) action(*alive, arguments...);
  };
}

}  // namespace pellar
