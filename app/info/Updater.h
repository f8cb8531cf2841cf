#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "core/UpdateInfo.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// Asks the product's web site whether there is a newer version and remembers the answer. Every failure is
// silent. Main thread only.
class Updater : public std::enable_shared_from_this<Updater> {
 public:
  using Info = UpdateInfo;

  // What `platform` refers to outlives this.
  static std::shared_ptr<Updater> create(const Platform& platform);
  Updater(const Updater&) = delete;
  Updater& operator=(const Updater&) = delete;

  // A newer version was found.
  std::function<void(const Info&)> onUpdate;
  // An answer named the current terms; comes with every answer that does, before onUpdate.
  std::function<void(const std::string& version, const std::optional<std::string>& url)> onEula;

  // One check; `notify` says whether the user gets a notification of a newer version.
  void check(bool notify);
  // Opens the page of the update that is known, else the site's page of downloads.
  void openDownload();

  // The last record that announced a newer version; stays for the run.
  [[nodiscard]] const std::optional<Info>& available() const { return available_; }
  // The product's web site, without a slash at its end.
  [[nodiscard]] const std::string& baseUrl() const { return baseUrl_; }
  // The running program's; "0" for one that does not say.
  [[nodiscard]] const std::string& currentVersion() const { return currentVersion_; }

 private:
  explicit Updater(const Platform& platform);
  void take(const Info& info, bool notify);
  void notifyOf(const std::string& latest);

  Platform platform_;
  std::string baseUrl_;
  std::string currentVersion_;
  std::optional<Info> available_;
  int lastRequest_ = 0;
  std::map<int, Subscription> requests_;  // what is under way
};

}  // namespace pellar
