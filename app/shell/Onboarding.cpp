#include "app/shell/Onboarding.h"

#include <chrono>
#include <utility>

#include "platform/Accessibility.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto trustPollInterval = 2000ms;

}  // namespace

void Onboarding::begin(std::function<void()> onTrusted) {
  onTrusted_ = std::move(onTrusted);
  platform_.accessibility.isTrustedPromptingUser();
  showOnboarding();
  trustTimer_ = platform_.mainLoop.every(trustPollInterval, [this] { poll(); });
}

void Onboarding::poll() {
  if (!platform_.accessibility.isTrusted()) return;
  trustTimer_.cancel();
  closed_.cancel();
  if (window_) window_->close();
  window_.reset();
  const auto onTrusted = std::exchange(onTrusted_, nullptr);
  onTrusted();
}

void Onboarding::showAgain() {
  if (!trustTimer_.active()) return;
  if (!window_) return showOnboarding();
  window_->makeKeyAndOrderFront();
}

void Onboarding::showOnboarding() {
  window_ = windows_->makeWindow(
      {.title = "Pellar needs Accessibility access",
       .contentSize = {420, 170},
       .elements = {
           WindowLabel{.text = "Pellar reads the positions of Word, Excel, PowerPoint and Outlook windows to "
                               "draw the tab strip. Allow it under Privacy & Security > Accessibility. This "
                               "window closes by itself once granted.",
                       .frame = WindowFrame{20, 70, 380, 80}},
           WindowButton{.title = "Open Accessibility settings",
                        .handler = [this] { openAccessibilityPane(); },
                        .frame = WindowFrame{20, 20, 220, 32}},
       }});
  closed_ = window_->onClosed([this] {
    closed_.cancel();
    window_.reset();
  });
  window_->makeKeyAndOrderFront();
}

void Onboarding::openAccessibilityPane() {
  platform_.workspace.openUrl(
      "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

}  // namespace pellar
