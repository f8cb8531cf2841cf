#pragma once

#include <memory>
#include <string>

#include "platform/SearchField.h"
#include "platform/shared/panel/KeyOwner.h"

namespace pellar {

class QtCanvas;
class SearchEdit;
class X11Panel;

// The search field of a panel. While it does not have the keyboard it is only a drawing in the panel's
// picture; a native editor inside the panel's window, which the keys are sent on to, takes its place for
// as long as it has.
class QtSearchField final : public SearchField, public KeyField {
 public:
  explicit QtSearchField(X11Panel& panel);
  ~QtSearchField() override;
  QtSearchField(const QtSearchField&) = delete;
  QtSearchField& operator=(const QtSearchField&) = delete;

  [[nodiscard]] std::string text() const override { return text_; }
  void setText(const std::string& text) override;
  void setPlaceholder(const std::string& text) override;
  void setFrame(const ViewRect& frame) override;
  [[nodiscard]] ViewRect frame() const override { return frame_; }
  void setHidden(bool hidden) override;
  [[nodiscard]] bool isHidden() const override { return hidden_; }
  void focus() override;
  void setOnActivate(std::function<void()> callback) override { onActivate_ = std::move(callback); }
  void setOnChange(std::function<void()> callback) override { onChange_ = std::move(callback); }
  void setOnCommand(CommandHandler handler) override { onCommand_ = std::move(handler); }

  // For the panel.
  [[nodiscard]] bool contains(ViewPoint point) const { return !hidden_ && frame_.contains(point); }
  void press();                  // a click while the editor is not there
  void beginEditing() override;  // takes the keyboard
  void endEditing() override;    // gives it back
  void drawAtRest(QtCanvas& canvas, const ViewRect& dirty) const;
  void groundChanged();

  // For the editor.
  void typed(std::string text);
  void pressedInEditor(ViewPoint location);  // points from the field's top left corner
  [[nodiscard]] bool command(const std::string& selector);

 private:
  [[nodiscard]] bool isEdited() const;
  void makeEditor();
  void placeEditor();

  X11Panel& panel_;
  std::string text_;
  std::string placeholder_;
  ViewRect frame_;
  bool hidden_ = false;
  std::function<void()> onActivate_;
  std::function<void()> onChange_;
  CommandHandler onCommand_;
  std::unique_ptr<SearchEdit> editor_;  // made when it is first needed, then kept
};

}  // namespace pellar
