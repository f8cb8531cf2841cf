#include "platform/linux/panel/QtSearchField.h"

#include <QApplication>
#include <utility>

#include "platform/linux/drawing/QtCanvas.h"
#include "platform/linux/panel/SearchEdit.h"
#include "platform/linux/panel/SearchFieldLook.h"
#include "platform/linux/panel/X11Panel.h"
#include "platform/linux/x11/ServerSync.h"

namespace pellar {

QtSearchField::QtSearchField(X11Panel& panel) : panel_(panel) {
  panel_.addField(*this);
}

QtSearchField::~QtSearchField() {
  panel_.removeField(*this);
}

void QtSearchField::setText(const std::string& text) {
  if (text == text_) return;
  text_ = text;
  if (editor_ != nullptr) editor_->setText(QString::fromStdString(text));
  panel_.setNeedsDisplay(frame_);
}

void QtSearchField::setPlaceholder(const std::string& text) {
  placeholder_ = text;
  if (editor_ != nullptr) editor_->setPlaceholderText(QString::fromStdString(text));
  panel_.setNeedsDisplay(frame_);
}

void QtSearchField::setFrame(const ViewRect& frame) {
  if (frame == frame_) return;
  panel_.setNeedsDisplay(frame_);
  frame_ = frame;
  panel_.setNeedsDisplay(frame_);
  if (isEdited()) placeEditor();
}

void QtSearchField::setHidden(bool hidden) {
  if (hidden == hidden_) return;
  hidden_ = hidden;
  if (hidden) panel_.services().keys.fieldHidden(*this);
  panel_.setNeedsDisplay(frame_);
}

void QtSearchField::focus() {
  if (!hidden_) panel_.services().keys.focus(*this, panel_);
}

bool QtSearchField::isEdited() const {
  return panel_.services().keys.isEdited(*this);
}

void QtSearchField::press() {
  if (onActivate_) onActivate_();
  // What the program does about it may take the panel away.
  if (!panel_.isVisible()) return;
  panel_.makeKeyAndOrderFront();
  focus();
}

void QtSearchField::pressedInEditor(ViewPoint location) {
  if (!panel_.isVisible()) return;
  const auto place = panel_.toScreen(ViewRect::of({frame_.x + location.x, frame_.y + location.y}, {}));
  if (place) panel_.reportPress(place->origin());
  panel_.services().keys.endListFocus();
  if (onActivate_) onActivate_();
}

void QtSearchField::typed(std::string text) {
  // A key that was on its way when the keyboard was given back.
  if (!isEdited()) return;
  // An input method writes without any key that the list could have left to the field.
  panel_.services().keys.endListFocus();
  text_ = std::move(text);
  if (onChange_) onChange_();
}

bool QtSearchField::command(const std::string& selector) {
  return onCommand_ && onCommand_(selector);
}

void QtSearchField::makeEditor() {
  editor_ = std::make_unique<SearchEdit>(*this, panel_);
  editor_->setPlaceholderText(QString::fromStdString(placeholder_));
  editor_->setAccessibleName(QString::fromStdString(placeholder_));
}

void QtSearchField::placeEditor() {
  editor_->place(frame_);
}

void QtSearchField::beginEditing() {
  // The editor's requests travel on the toolkit's connection: the panel's window must be there before them.
  syncWithServer(panel_.services().connection.xcb());
  if (editor_ == nullptr) makeEditor();
  editor_->setText(QString::fromStdString(text_));
  placeEditor();
  editor_->show();
  QApplication::setActiveWindow(editor_.get());
  editor_->setFocus();
  X11PanelServices& services = panel_.services();
  services.keyboard.take(static_cast<xcb_window_t>(editor_->winId()), services.inputTime);
}

void QtSearchField::endEditing() {
  panel_.services().keyboard.giveBack();
  editor_->clearFocus();
  QApplication::setActiveWindow(nullptr);
  editor_->hide();
  panel_.setNeedsDisplay(frame_);
}

void QtSearchField::groundChanged() {
  if (isEdited()) editor_->update();
}

void QtSearchField::drawAtRest(QtCanvas& canvas, const ViewRect& dirty) const {
  if (hidden_ || !frame_.intersects(dirty)) return;
  SearchFieldLook::drawGround(canvas, frame_);
  if (isEdited()) return;
  const bool empty = text_.empty();
  const double height = canvas.lineHeight(SearchFieldLook::font);
  const ViewRect line{frame_.minX() + SearchFieldLook::textLeft, frame_.midY() - height / 2,
                      frame_.width - SearchFieldLook::textLeft - SearchFieldLook::textRight, height};
  canvas.drawTruncatedText(
      empty ? placeholder_ : text_, line, SearchFieldLook::font,
      empty ? receding(SearchFieldLook::placeholderColor.alpha, canvas) : SearchFieldLook::textColor);
}

}  // namespace pellar
