#include "app/shell/AlreadyRunning.h"

#include <utility>

#include "platform/Workspace.h"

namespace pellar {

AlreadyRunning::AlreadyRunning(const Platform& platform, std::function<void()> askTheFirst)
    : platform_(platform),
      askTheFirst_(std::move(askTheFirst)),
      window_(platform.windows.makeWindow(
          {.title = "Pellar is already running",
           .contentSize = {360, 130},
           .spacing = 16,
           .insets = {.top = 24, .left = 24, .bottom = 20, .right = 24},
           .elements =
               {
                   WindowLabel{.text =
                                   "Its menu is in the menu bar. Where there is no room for it, it can be "
                                   "opened from here.",
                               .centred = true,
                               .wrapWidth = 312,
                               .maximumLines = 2},
                   WindowButton{.title = "Open Menu",
                                .handler =
                                    [this] {
                                      // The menu opens once this program has given the keyboard up.
                                      window_->close();
                                      askTheFirst_();
                                      platform_.application.terminate();
                                    },
                                .isDefault = true},
               }})),
      closed_(window_->onClosed([this] { platform_.application.terminate(); })) {}

void AlreadyRunning::show() {
  platform_.workspace.activateIgnoringOtherApps();
  window_->makeKeyAndOrderFront();
}

}  // namespace pellar
