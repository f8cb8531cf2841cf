#include "platform/sim/panel/SimSearchField.h"

#include <algorithm>
#include <utility>

#include "core/Notify.h"
#include "platform/sim/drawing/SimTextMeasure.h"
#include "platform/sim/panel/SimPanel.h"

namespace pellar {

SimSearchField::SimSearchField(std::shared_ptr<SimControls> controls) : controls_(std::move(controls)) {
  controls_->fields.push_back(this);
}

SimSearchField::~SimSearchField() {
  std::erase(controls_->fields, this);
  controls_->keys.fieldEnded(*this);
}

void SimSearchField::setHidden(bool hidden) {
  hidden_ = hidden;
  if (hidden) controls_->keys.fieldHidden(*this);
}

void SimSearchField::focus() {
  if (!hidden_ && controls_->panel != nullptr) controls_->keys.focus(*this, *controls_->panel);
}

void SimSearchField::click() {
  const auto controls = controls_;
  notify(onActivate_);
  const auto& fields = controls->fields;
  if (std::find(fields.begin(), fields.end(), this) != fields.end()) focus();
}

void SimSearchField::type(const std::string& codePoint) {
  change(text_ + codePoint);
}

void SimSearchField::command(const std::string& selector) {
  const auto controls = controls_;
  if (const auto handler = onCommand_; handler && handler(selector)) return;
  const auto& fields = controls->fields;
  if (std::find(fields.begin(), fields.end(), this) == fields.end()) return;
  commandsLeftToIt_.push_back(selector);
  if (selector == "cancelOperation:" && !text_.empty()) change({});
  if (selector == "deleteBackward:" && !text_.empty()) {
    change(SimTextMeasure::prefix(text_, SimTextMeasure::codePoints(text_) - 1));
  }
}

void SimSearchField::change(std::string text) {
  text_ = std::move(text);
  notify(onChange_);
}

}  // namespace pellar
