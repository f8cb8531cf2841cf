#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/info/EulaWindowController.h"
#include "app/shell/OwnWindows.h"
#include "core/StateStore.h"
#include "platform/Platform.h"

namespace pellar {

// Which terms of use must have been accepted, and the window that asks for it. Main thread only.
class TermsGate : public std::enable_shared_from_this<TermsGate> {
 public:
  // What `platform` refers to outlives this.
  static std::shared_ptr<TermsGate> create(const Platform& platform, std::shared_ptr<OwnWindows> windows,
                                           std::shared_ptr<StateStore> store);
  TermsGate(const TermsGate&) = delete;
  TermsGate& operator=(const TermsGate&) = delete;

  // The user accepted: before the gates are looked at again.
  std::function<void()> onAccepted;

  // Whether the user has accepted exactly the required terms.
  [[nodiscard]] bool isAccepted() const;
  // Other terms are required from now on; an absent address keeps the one known. Shows nothing.
  void require(const std::string& version, const std::optional<std::string>& url);
  // Shows the Terms window when the required terms are not accepted, otherwise closes it.
  void presentGates();
  // For half a second no key answers the Terms window: the user did nothing for it to come, and may be
  // typing.
  void restKeys();
  // Brings the Terms window to the front; one that is open stays as it is.
  void showEula();

 private:
  TermsGate(const Platform& platform, std::shared_ptr<OwnWindows> windows, std::shared_ptr<StateStore> store);
  void accept();

  Platform platform_;
  std::shared_ptr<OwnWindows> windows_;
  std::shared_ptr<StateStore> store_;
  std::string requiredEula_ = "1";
  std::string eulaTermsUrl_;
  std::unique_ptr<EulaWindowController> eulaWindow_;  // null while nothing is asked
};

}  // namespace pellar
