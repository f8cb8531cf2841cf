#include "app/tracking/ObservedApplication.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace pellar {
namespace {

constexpr std::array<std::string_view, 10> notifications{
    "AXFocusedWindowChanged", "AXWindowCreated",      "AXUIElementDestroyed",   "AXWindowMoved",
    "AXWindowResized",        "AXWindowMiniaturized", "AXWindowDeminiaturized", "AXTitleChanged",
    "AXApplicationHidden",    "AXApplicationShown"};

constexpr std::array<std::string_view, 3> windowNotifications{"AXUIElementDestroyed", "AXWindowMiniaturized",
                                                              "AXWindowDeminiaturized"};

using ElementSet = std::unordered_set<Element, ElementHash>;

}  // namespace

ObservedApplication::ObservedApplication(std::unique_ptr<ElementObserver> observer)
    : observer_(std::move(observer)) {}

std::unique_ptr<ObservedApplication> ObservedApplication::observe(Accessibility& accessibility, ProcessId pid,
                                                                  const Element& application,
                                                                  std::function<void()> onNotification) {
  auto observer = accessibility.observe(pid, std::move(onNotification));
  if (!observer) return nullptr;
  // One that does not listen to the first registration is deaf to the others, and each would be waited for.
  const auto first = observer->add(application, notifications.front());
  if (first == Registration::notListening || first == Registration::gone) return nullptr;
  for (const auto notification : std::span(notifications).subspan(1))
    observer->add(application, notification);
  return std::unique_ptr<ObservedApplication>(new ObservedApplication(std::move(observer)));
}

void ObservedApplication::follow(const std::vector<Element>& windows) {
  if (windows == windows_) return;
  const ElementSet before(windows_.begin(), windows_.end());
  const ElementSet now(windows.begin(), windows.end());
  for (const auto& window : before) {
    if (now.contains(window)) continue;
    for (const auto notification : windowNotifications) observer_->remove(window, notification);
  }
  std::vector<Element> registered;
  registered.reserve(windows.size());
  bool listening = true;
  for (const auto& window : windows) {
    if (!before.contains(window)) listening = listening && registerOn(window);
    // The others are tried with the next picture.
    if (listening || before.contains(window)) registered.push_back(window);
  }
  windows_ = std::move(registered);
}

bool ObservedApplication::registerOn(const Element& window) {
  return std::ranges::none_of(windowNotifications, [&](const auto notification) {
    return observer_->add(window, notification) == Registration::notListening;
  });
}

}  // namespace pellar
