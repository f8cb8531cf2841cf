#include "app/info/EulaWindowController.h"

#include <utility>

#include "app/info/Agreement.h"
#include "app/info/WebAddress.h"

namespace pellar {

EulaWindowController::EulaWindowController(Windows& windows, Workspace& workspace, Application& application,
                                           const std::string& version, const std::string& termsUrl,
                                           std::function<void()> onAccept)
    : onAccept_(std::move(onAccept)) {
  const WindowButton fullTerms{.title = "Read full terms online",
                               .handler = [&workspace, termsUrl] { WebAddress::open(workspace, termsUrl); },
                               .bezel = ButtonBezel::inlined};
  const WindowButtonRow choice{10,
                               {{.title = "Quit", .handler = [&application] { application.terminate(); }},
                                {.title = "I Agree", .handler = [this] { accept(); }, .isDefault = true}}};
  window_ =
      windows.makeWindow({.title = "Pellar End User Agreement",
                          .contentSize = {440, 360},
                          .closable = false,
                          .level = WindowLevel::modalPanel,
                          .alignment = StackAlignment::trailing,
                          .spacing = 10,
                          .insets = {.top = 18, .left = 20, .bottom = 18, .right = 20},
                          .elements = {
                              WindowLabel{.text = "End User Agreement (v" + version + ")",
                                          .fontSize = 16,
                                          .weight = LabelWeight::semibold},
                              WindowTextBox{.text = std::string(agreementText()), .height = 210, .inset = 6},
                              fullTerms,
                              choice,
                          }});
}

void EulaWindowController::accept() {
  // What is called may drop this controller, yet the window has to be closed after it.
  const auto window = window_;
  const auto onAccept = onAccept_;
  onAccept();
  window->close();
}

}  // namespace pellar
