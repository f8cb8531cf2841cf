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
  shown_.reset();
  const auto onTrusted = std::exchange(onTrusted_, nullptr);
  onTrusted();
}

void Onboarding::showAgain() {
  if (!trustTimer_.active()) return;
  if (!shown_) return showOnboarding();
  shown_->window->makeKeyAndOrderFront();
}

void Onboarding::showOnboarding() {
  auto window = windows_->makeWindow(
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
  auto closed = window->onClosed([this] { shown_.reset(); });
  shown_ = Shown{std::move(window), std::move(closed)};
  shown_->window->makeKeyAndOrderFront();
}

void Onboarding::openAccessibilityPane() {
  platform_.workspace.openUrl(
      "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility");
}

}  // namespace pellar
