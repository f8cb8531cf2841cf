#include "app/info/AboutWindowController.h"

#include <utility>

#include "app/info/WebAddress.h"
#include "core/Notify.h"

namespace pellar {
namespace {

constexpr const char* statusLabel = "status";

}  // namespace

AboutWindowController::AboutWindowController(Windows& windows, Workspace& workspace, std::string site,
                                             const std::string& version, const std::string& build,
                                             std::function<void()> onCheck)
    : workspace_(workspace), site_(std::move(site)), onCheck_(std::move(onCheck)) {
  const auto openPage = [this](const std::string& path) {
    return [this, path] { WebAddress::open(workspace_, site_ + path); };
  };
  const WindowButtonRow buttons{
      8,
      {{"Check for updates", [this] { check(); }}, {"Website", openPage("")}, {"Terms", openPage("/terms")}}};
  window_ = windows.makeWindow(
      {.title = "About Pellar",
       .contentSize = {360, 260},
       .spacing = 8,
       .insets = {.top = 26, .left = 24, .bottom = 24, .right = 24},
       .elements = {
           WindowLabel{.text = "Pellar", .fontSize = 26, .weight = LabelWeight::semibold},
           WindowLabel{.text = "Version " + version + " (build " + build + ")",
                       .color = TextColor::secondaryLabel},
           WindowLabel{.text = "Tabs for every window on Mac and Windows.",
                       .color = TextColor::secondaryLabel,
                       .centred = true,
                       .wrapWidth = 300,
                       .maximumLines = 2},
           WindowSpacer{10},
           WindowLabel{.id = statusLabel, .fontSize = 11, .color = TextColor::secondaryLabel},
           WindowSpacer{6},
           buttons,
       }});
}

void AboutWindowController::setStatus(const std::string& status) {
  window_->setText(statusLabel, status);
}

void AboutWindowController::check() {
  setStatus("Checking…");
  notify(onCheck_);
}

}  // namespace pellar
