#include "platform/sim/panel/SimSearchField.h"

#include <algorithm>
#include <utility>

#include "core/Notify.h"
#include "platform/sim/drawing/SimTextMeasure.h"
#include "platform/sim/panel/SimPanel.h"

namespace pellar {

SimSearchField::SimSearchField(std::shared_ptr<SimFields> fields) : fields_(std::move(fields)) {
  fields_->all.push_back(this);
}

SimSearchField::~SimSearchField() {
  std::erase(fields_->all, this);
  fields_->keys.fieldEnded(*this);
}

void SimSearchField::setHidden(bool hidden) {
  hidden_ = hidden;
  if (hidden) fields_->keys.fieldHidden(*this);
}

void SimSearchField::focus() {
  if (!hidden_ && fields_->panel != nullptr) fields_->keys.focus(*this, *fields_->panel);
}

void SimSearchField::click() {
  const auto fields = fields_;
  notify(onActivate_);
  const auto& all = fields->all;
  if (std::find(all.begin(), all.end(), this) != all.end()) focus();
}

void SimSearchField::type(const std::string& codePoint) {
  change(text_ + codePoint);
}

void SimSearchField::command(const std::string& selector) {
  const auto fields = fields_;
  if (const auto handler = onCommand_; handler && handler(selector)) return;
  const auto& all = fields->all;
  if (std::find(all.begin(), all.end(), this) == all.end()) return;
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
