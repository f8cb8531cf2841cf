#include "platform/sim/desktop/SimPlainWindow.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <variant>

#include "platform/sim/desktop/SimWindows.h"

namespace pellar {

namespace {

std::string shown(const WindowButton& button) {
  return button.isDefault ? "[[" + button.title + "]]" : "[" + button.title + "]";
}

}  // namespace

SimPlainWindow::SimPlainWindow(SimWindows& owner, WindowDescription description)
    : owner_(owner), description_(std::move(description)) {
  owner_.join(*this);
}

SimPlainWindow::~SimPlainWindow() {
  owner_.leave(*this);
}

void SimPlainWindow::makeKeyAndOrderFront() {
  visible_ = true;
  owner_.makeKey(*this);
}

bool SimPlainWindow::isVisible() const {
  return visible_ && !owner_.hidden();
}

void SimPlainWindow::close() {
  owner_.noteClosing();
  if (!std::exchange(visible_, false)) return;
  owner_.resignKey(*this);
}

void SimPlainWindow::setText(const std::string& id, const std::string& text) {
  for (auto& element : description_.elements) {
    auto* const label = std::get_if<WindowLabel>(&element);
    if (label != nullptr && label->id == id) label->text = text;
  }
}

Subscription SimPlainWindow::onClosed(std::function<void()> callback) {
  return closed_.add(std::move(callback));
}

std::vector<std::string> SimPlainWindow::texts() const {
  std::vector<std::string> texts;
  for (const auto& element : description_.elements) {
    if (const auto* label = std::get_if<WindowLabel>(&element)) texts.push_back(label->text);
    if (const auto* box = std::get_if<WindowTextBox>(&element)) texts.push_back(box->text);
    if (const auto* button = std::get_if<WindowButton>(&element)) texts.push_back(shown(*button));
    if (const auto* row = std::get_if<WindowButtonRow>(&element))
      for (const auto& button : row->buttons) texts.push_back(shown(button));
  }
  return texts;
}

std::string SimPlainWindow::text(const std::string& id) const {
  for (const auto& element : description_.elements) {
    const auto* const label = std::get_if<WindowLabel>(&element);
    if (label != nullptr && label->id == id) return label->text;
  }
  throw std::logic_error("\"" + description_.title + "\" has no label \"" + id + "\"");
}

std::vector<WindowButton> SimPlainWindow::buttons() const {
  std::vector<WindowButton> all;
  for (const auto& element : description_.elements) {
    if (const auto* button = std::get_if<WindowButton>(&element)) all.push_back(*button);
    if (const auto* row = std::get_if<WindowButtonRow>(&element))
      all.insert(all.end(), row->buttons.begin(), row->buttons.end());
  }
  return all;
}

// The handler may destroy this window.
void SimPlainWindow::run(const std::function<void()>& handler) {
  auto& loop = owner_.loop();
  loop.post(handler);
  loop.runUntilIdle();
}

void SimPlainWindow::press(const std::string& button) {
  if (!isVisible()) throw std::logic_error("\"" + description_.title + "\" is not to be seen");
  for (const auto& each : buttons())
    if (each.title == button) return run(each.handler);
  throw std::logic_error("\"" + description_.title + "\" has no button \"" + button + "\"");
}

void SimPlainWindow::clickClose() {
  if (!isVisible() || !description_.closable)
    throw std::logic_error("\"" + description_.title + "\" has no close button to click");
  visible_ = false;
  owner_.resignKey(*this);
  closed_.post(owner_.loop());
  owner_.loop().runUntilIdle();
}

void SimPlainWindow::restDefaultButton(std::chrono::milliseconds time) {
  keysRestUntil_ = owner_.loop().uptime() + time;
}

void SimPlainWindow::pressReturn() {
  if (owner_.loop().uptime() < keysRestUntil_) return;
  const auto all = buttons();
  const auto focused = std::ranges::find_if(all, [this](const WindowButton& each) {
    return each.title == focusedButton_ && each.bezel == ButtonBezel::rounded;
  });
  if (focused != all.end()) return run(focused->handler);
  for (const auto& each : all)
    if (each.isDefault) return run(each.handler);
}

void SimPlainWindow::tabTo(const std::string& button) {
  const auto all = buttons();
  if (std::ranges::find(all, button, &WindowButton::title) == all.end())
    throw std::logic_error("\"" + description_.title + "\" has no button \"" + button + "\"");
  focusedButton_ = button;
}

}  // namespace pellar
