#pragma once

#include <utility>

namespace pellar {

// Calls a copy of the callback, if there is one: what it calls may replace it, or end the object it is kept
// in.
template <class Callback, class... Arguments>
void notify(Callback callback, Arguments&&... arguments) {
  if (callback) callback(std::forward<Arguments>(arguments)...);
}

}  // namespace pellar
