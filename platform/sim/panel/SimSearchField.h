#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/SearchField.h"
#include "platform/sim/panel/SimViewHost.h"

namespace pellar {

// A search field that a test can click, read and type into.
class SimSearchField final : public SearchField, public KeyField {
 public:
  explicit SimSearchField(std::shared_ptr<SimControls> controls);
  ~SimSearchField() override;
  SimSearchField(const SimSearchField&) = delete;
  SimSearchField& operator=(const SimSearchField&) = delete;

  [[nodiscard]] std::string text() const override { return text_; }
  void setText(const std::string& text) override { text_ = text; }
  void setPlaceholder(const std::string& text) override { placeholder_ = text; }
  void setFrame(const ViewRect& frame) override { frame_ = frame; }
  [[nodiscard]] ViewRect frame() const override { return frame_; }
  void setHidden(bool hidden) override;
  [[nodiscard]] bool isHidden() const override { return hidden_; }
  void focus() override;
  void setOnActivate(std::function<void()> callback) override { onActivate_ = std::move(callback); }
  void setOnChange(std::function<void()> callback) override { onChange_ = std::move(callback); }
  void setOnCommand(CommandHandler handler) override { onCommand_ = std::move(handler); }

  [[nodiscard]] const std::string& placeholder() const { return placeholder_; }
  [[nodiscard]] bool isFocused() const { return controls_->keys.isFirstResponder(*this); }
  // The key commands that the program did not take, in their order: a field does as it likes with them.
  [[nodiscard]] const std::vector<std::string>& commandsLeftToIt() const { return commandsLeftToIt_; }

  // The user's click, keys and key commands. The program may delete the field in answer to any of them.
  void click();
  void type(const std::string& codePoint);
  void command(const std::string& selector);

  void beginEditing() override {}
  void endEditing() override {}

 private:
  void change(std::string text);

  std::shared_ptr<SimControls> controls_;
  std::string text_;
  std::string placeholder_;
  ViewRect frame_;
  bool hidden_ = false;
  std::vector<std::string> commandsLeftToIt_;
  std::function<void()> onActivate_;
  std::function<void()> onChange_;
  CommandHandler onCommand_;
};

}  // namespace pellar
