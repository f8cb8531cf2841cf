#include "app/info/EulaWindowController.h"

#include <utility>

#include "app/info/Agreement.h"
#include "app/info/WebAddress.h"

namespace pellar {
namespace {

// What "I Agree" does. The button owns it: what is called may drop the controller, and until it returns the
// window is there to be closed, and to be pressed again.
struct Acceptance {
  std::function<void()> onAccept;
  std::weak_ptr<PlainWindow> window;

  void accept() {
    const auto closing = window.lock();
    const auto accepted = std::exchange(onAccept, nullptr);
    if (!closing || !accepted) return;
    accepted();
    closing->close();
  }
};

}  // namespace

EulaWindowController::EulaWindowController(Windows& windows, Workspace& workspace, Application& application,
                                           const std::string& version, const std::string& termsUrl,
                                           std::function<void()> onAccept) {
  const auto acceptance = std::make_shared<Acceptance>(Acceptance{std::move(onAccept), {}});
  const WindowButton fullTerms{.title = "Read full terms online",
                               .handler = [&workspace, termsUrl] { WebAddress::open(workspace, termsUrl); },
                               .bezel = ButtonBezel::inlined};
  const WindowButtonRow choice{
      10,
      {{.title = "Quit", .handler = [&application] { application.terminate(); }},
       {.title = "I Agree", .handler = [acceptance] { acceptance->accept(); }, .isDefault = true}}};
  window_ =
      windows.makeWindow({.title = "Pellar End User Agreement",
                          .contentSize = {440, 360},
                          .closable = false,
                          .level = WindowLevel::modalPanel,
                          .alignment = StackAlignment::trailing,
                          .spacing = 10,
                          .columnReachesBottom = true,
                          .insets = {.top = 18, .left = 20, .bottom = 18, .right = 20},
                          .elements = {
                              WindowLabel{.text = "End User Agreement (v" + version + ")",
                                          .fontSize = 16,
                                          .weight = LabelWeight::semibold},
                              WindowTextBox{.text = std::string(agreementText()), .height = 210, .inset = 6},
                              fullTerms,
                              choice,
                          }});
  acceptance->window = window_;
}

}  // namespace pellar
