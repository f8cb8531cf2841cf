#pragma once

#include <memory>

#include "app/info/Updater.h"
#include "core/StateStore.h"
#include "platform/MainLoop.h"
#include "platform/Subscription.h"

namespace pellar {

// When the program looks for updates by itself, as long as the settings let it. Main thread only.
class UpdateSchedule {
 public:
  // `loop` outlives this.
  UpdateSchedule(MainLoop& loop, std::shared_ptr<StateStore> store, std::shared_ptr<Updater> updater);

  // From now on: soon after launching, then a few times a day.
  void startUpdateChecks();

 private:
  MainLoop& loop_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<Updater> updater_;
  Subscription firstCheck_;
  Subscription updateTimer_;
};

}  // namespace pellar
