#include "platform/sim/user/SimKeyboard.h"

#include <optional>
#include <utility>

#include "platform/VirtualKey.h"
#include "platform/sim/drawing/SimTextMeasure.h"
#include "platform/sim/panel/SimListView.h"
#include "platform/sim/panel/SimSearchField.h"

namespace pellar {

namespace {

// The virtual code of the key that gives a command.
std::optional<std::uint16_t> keyCodeOf(const std::string& selector) {
  if (selector == "insertNewline:") return VirtualKey::returnKey;
  if (selector == "deleteBackward:") return VirtualKey::backspace;
  if (selector == "cancelOperation:") return VirtualKey::escape;
  if (selector == "pageUp:") return VirtualKey::pageUp;
  if (selector == "pageDown:") return VirtualKey::pageDown;
  if (selector == "moveDown:") return VirtualKey::down;
  if (selector == "moveUp:") return VirtualKey::up;
  return std::nullopt;
}

}  // namespace

SimSearchField* SimKeyboard::target() const {
  // There are no other fields here.
  return static_cast<SimSearchField*>(panels_.keys().editedField());
}

// The system hands a key to the application in front without this program, unless a tap of it listens or one
// of its panels has the keys; then the key waits for the main thread.
void SimKeyboard::press(std::function<void()> arrive) {
  if (loop_.isHeldUp() && !taps_.holdKeys() && panels_.keys().keyPanel() == nullptr) return arrive();
  loop_.post(std::move(arrive));
}

void SimKeyboard::type(std::string_view text) {
  while (!text.empty()) {
    std::string key = SimTextMeasure::prefix(text, 1);
    text.remove_prefix(key.size());
    press([this, key = std::move(key)] {
      static_cast<void>(panels_.keys().offerToList(std::nullopt));
      if (auto* const field = target()) {
        field->type(key);
      } else if (const auto application = desktop_.frontApplication();
                 application && panels_.keys().keyPanel() == nullptr) {
        application->typed += key;
      }
    });
    loop_.runUntilIdle();
  }
}

void SimKeyboard::command(const std::string& selector) {
  if (auto* const window = windows_.key()) {
    if (selector == "insertNewline:") window->pressReturn();
    return;
  }
  loop_.post([this, selector] {
    if (panels_.keys().offerToList(keyCodeOf(selector))) return;
    if (auto* const field = target()) field->command(selector);
  });
  loop_.runUntilIdle();
}

void SimKeyboard::keyDown(std::uint16_t keyCode, std::uint64_t flags) {
  press([this, keyCode, flags] {
    if (taps_.keyDown(keyCode, flags) || panels_.keys().keyPanel() != nullptr) return;
    if (const auto application = desktop_.frontApplication())
      application->keysDown.push_back({keyCode, flags});
  });
  loop_.runUntilIdle();
}

}  // namespace pellar
