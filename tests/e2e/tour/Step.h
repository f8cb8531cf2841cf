#pragma once

#include <functional>
#include <string>

namespace pellar::e2e {

// One thing a user does. `act` does it, waits until the screen shows what should have come of it, and throws
// when that does not come.
struct Step {
  std::string picture;  // what the picture's file is called, without its number
  std::string deed;     // what was done, for the reader
  std::function<void()> act;
};

}  // namespace pellar::e2e
