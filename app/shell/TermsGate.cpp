#include "app/shell/TermsGate.h"

#include <chrono>
#include <utility>

#include "app/info/WebAddress.h"
#include "core/AppState.h"
#include "core/Log.h"
#include "core/Notify.h"
#include "core/Weakly.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// As long as the user types on before he sees that another window has come.
constexpr auto keysMeantForOthers = 500ms;

}  // namespace

std::shared_ptr<TermsGate> TermsGate::create(const Platform& platform, std::shared_ptr<OwnWindows> windows,
                                             std::shared_ptr<StateStore> store) {
  return std::shared_ptr<TermsGate>(new TermsGate(platform, std::move(windows), std::move(store)));
}

TermsGate::TermsGate(const Platform& platform, std::shared_ptr<OwnWindows> windows,
                     std::shared_ptr<StateStore> store)
    : platform_(platform),
      windows_(std::move(windows)),
      store_(std::move(store)),
      eulaTermsUrl_(WebAddress::withoutSlashAtEnd(platform.bundle.webSite) + "/terms.html") {}

bool TermsGate::isAccepted() const {
  const auto& accepted = store_->state().settings.acceptedEulaVersion;
  return !accepted.empty() && accepted == requiredEula_;
}

void TermsGate::require(const std::string& version, const std::optional<std::string>& url) {
  requiredEula_ = version;
  if (url) eulaTermsUrl_ = *url;
}

void TermsGate::presentGates() {
  if (!isAccepted()) {
    showEula();
    return;
  }
  eulaWindow_.reset();
}

void TermsGate::restKeys() {
  if (eulaWindow_) eulaWindow_->window().restDefaultButton(keysMeantForOthers);
}

void TermsGate::showEula() {
  if (!eulaWindow_) {
    eulaWindow_ = std::make_unique<EulaWindowController>(
        *windows_, platform_.workspace, platform_.application, requiredEula_, eulaTermsUrl_,
        weakly(weak_from_this(), [](TermsGate& self) { self.accept(); }));
  }
  eulaWindow_->window().makeKeyAndOrderFront();
}

void TermsGate::accept() {
  store_->update([this](AppState& state) { state.settings.acceptedEulaVersion = requiredEula_; });
  Log::write("terms accepted: v" + requiredEula_);
  eulaWindow_.reset();
  notify(onAccepted);
  presentGates();
}

}  // namespace pellar
