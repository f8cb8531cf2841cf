#include "app/info/Updater.h"

#include <chrono>
#include <cstddef>

#include "app/info/WebAddress.h"
#include "core/Log.h"
#include "core/Notify.h"
#include "core/SemVer.h"
#include "core/Weakly.h"
#include "platform/HttpClient.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto timeout = 15s;
constexpr std::size_t largestAnswer = 1 << 20;

const char* word(bool value) {
  return value ? "true" : "false";
}

}  // namespace

std::shared_ptr<Updater> Updater::create(const Platform& platform) {
  return std::shared_ptr<Updater>(new Updater(platform));
}

Updater::Updater(const Platform& platform)
    : platform_(platform),
      baseUrl_(WebAddress::withoutSlashAtEnd(platform.bundle.webSite)),
      currentVersion_(platform.bundle.shortVersion.value_or("0")) {}

void Updater::check(bool notify) {
  const std::string url = baseUrl_ + "/v1/update";
  if (!WebAddress::isValid(url)) return;
  const int number = ++lastRequest_;
  requests_[number] = platform_.httpClient.get(
      {.url = url, .timeout = timeout, .largestBody = largestAnswer},
      weakly(weak_from_this(), [number, notify](Updater& self, const std::optional<std::string>& body) {
        const auto ended = self.requests_.extract(number);
        const auto info = body ? decodeUpdateInfo(*body) : std::nullopt;
        if (info) self.take(*info, notify);
      }));
}

void Updater::take(const Info& info, bool notify) {
  if (info.eula) pellar::notify(onEula, info.eula->version, info.eula->url);
  if (!SemVer::isNewer(info.latest, currentVersion_)) return;
  Log::write("update available: " + info.latest + " (running " + currentVersion_ +
             "), notify=" + word(notify));
  available_ = info;
  pellar::notify(onUpdate, info);
  if (notify) notifyOf(info.latest);
}

void Updater::notifyOf(const std::string& latest) {
  const int number = ++lastRequest_;
  requests_[number] = platform_.notifications.requestAuthorization(
      weakly(weak_from_this(), [number, latest](Updater& self, bool granted) {
        const auto ended = self.requests_.extract(number);
        Log::write(std::string("update notification auth granted=") + word(granted) + "; posting for " +
                   latest);
        if (!granted) return;
        self.platform_.notifications.add(
            {.identifier = "pellar-update-" + latest,
             .title = "Pellar " + latest + " is available",
             .body = "You have " + self.currentVersion_ + ". Open Pellar to download the update."});
      }));
}

void Updater::openDownload() {
  const auto known = available_ ? available_->url : std::nullopt;
  WebAddress::open(platform_.workspace, known.value_or(baseUrl_ + "/#download"));
}

}  // namespace pellar
