#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace pellar::e2e {

// How long a desktop may take to do what a test waits for. Long, because the other core may be busy; a test
// that passes never waits it out.
inline constexpr std::chrono::milliseconds patience{15000};

// What a test waited for did not come. The message says what, and what was there instead.
class DeadlineMissed : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace pellar::e2e
