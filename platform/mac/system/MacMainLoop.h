#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>

#include "platform/MainLoop.h"
#include "platform/mac/system/CFRef.h"

namespace pellar {

// The main run loop. Everything is scheduled in the common modes, so that it also runs while a menu is
// tracked (NSEventTrackingRunLoopMode) and while a question is open (NSModalPanelRunLoopMode).
class MacMainLoop final : public MainLoop {
 public:
  MacMainLoop();
  ~MacMainLoop() override;
  MacMainLoop(const MacMainLoop&) = delete;
  MacMainLoop& operator=(const MacMainLoop&) = delete;

  void post(Callback block) override;
  [[nodiscard]] Subscription after(std::chrono::milliseconds delay, Callback tick) override;
  [[nodiscard]] Subscription every(std::chrono::milliseconds interval, Callback tick) override;
  [[nodiscard]] double secondsSince1970() const override;
  [[nodiscard]] std::chrono::nanoseconds uptime() const override;

  // How late a timer that repeats may fire.
  [[nodiscard]] static std::chrono::duration<double> tolerance(std::chrono::milliseconds interval);

 private:
  void runPosted();

  std::mutex mutex_;
  std::deque<Callback> waiting_;  // guarded by mutex_, as are the two counts
  std::uint64_t posted_ = 0;
  std::uint64_t taken_ = 0;
  CFRef<CFRunLoopSourceRef> source_;
};

}  // namespace pellar
