#pragma once

#include <functional>
#include <memory>

#include "platform/Platform.h"
#include "platform/Subscription.h"
#include "platform/Windows.h"

namespace pellar {

// All that a second copy of the program does: it says that the first one is running, and ends. Main thread
// only.
class AlreadyRunning {
 public:
  // What `platform` refers to outlives this. `askTheFirst` has the first copy show itself.
  AlreadyRunning(const Platform& platform, std::function<void()> askTheFirst);
  AlreadyRunning(const AlreadyRunning&) = delete;
  AlreadyRunning& operator=(const AlreadyRunning&) = delete;

  // Brings the window to the front. The program ends when the user closes it, or has the first copy show
  // itself.
  void show();

 private:
  Platform platform_;
  std::function<void()> askTheFirst_;
  std::unique_ptr<PlainWindow> window_;
  Subscription closed_;  // depends-on: window_
};

}  // namespace pellar
