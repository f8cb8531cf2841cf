#include "app/shell/UpdateSchedule.h"

#include <chrono>
#include <utility>

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto firstCheckDelay = 8s;
constexpr auto checkInterval = 6h;

}  // namespace

UpdateSchedule::UpdateSchedule(MainLoop& loop, std::shared_ptr<StateStore> store,
                               std::shared_ptr<Updater> updater)
    : loop_(loop), store_(std::move(store)), updater_(std::move(updater)) {}

void UpdateSchedule::startUpdateChecks() {
  const auto check = [store = store_, updater = updater_] {
    if (store->state().settings.autoUpdateCheck) updater->check(true);
  };
  firstCheck_ = loop_.after(firstCheckDelay, check);
  updateTimer_ = loop_.every(checkInterval, check);
}

}  // namespace pellar
