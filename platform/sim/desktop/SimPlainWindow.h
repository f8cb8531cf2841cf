#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Windows.h"
#include "platform/shared/system/CallbackList.h"

namespace pellar {

class SimWindows;

// An ordinary window of the program, as a user reads and works it.
class SimPlainWindow final : public PlainWindow {
 public:
  SimPlainWindow(SimWindows& owner, WindowDescription description);
  ~SimPlainWindow() override;
  SimPlainWindow(const SimPlainWindow&) = delete;
  SimPlainWindow& operator=(const SimPlainWindow&) = delete;

  void makeKeyAndOrderFront() override;
  void restDefaultButton(std::chrono::milliseconds time) override;
  void close() override;
  [[nodiscard]] bool isVisible() const override;
  void setText(const std::string& id, const std::string& text) override;
  [[nodiscard]] Subscription onClosed(std::function<void()> callback) override;

  [[nodiscard]] const WindowDescription& description() const { return description_; }

  // Every text from top to bottom; of buttons the titles, in brackets, the default one in double ones.
  [[nodiscard]] std::vector<std::string> texts() const;
  [[nodiscard]] std::string text(const std::string& id) const;

  // The user presses a button, by the mouse; closes the window; presses Return. What is not possible throws,
  // but a key without effect does nothing. The main loop runs until idle.
  void press(const std::string& button);
  void clickClose();
  void pressReturn();
  // The user goes to a button by the Tab key, with the keyboard's access to all controls switched on.
  void tabTo(const std::string& button);

 private:
  [[nodiscard]] std::vector<WindowButton> buttons() const;
  void run(const std::function<void()>& handler);

  SimWindows& owner_;
  WindowDescription description_;
  bool visible_ = false;
  std::optional<std::string> focusedButton_;
  std::chrono::nanoseconds keysRestUntil_{0};  // of the loop's time
  CallbackList<> closed_;
};

}  // namespace pellar
