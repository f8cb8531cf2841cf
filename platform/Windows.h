#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/Geometry.h"
#include "platform/Subscription.h"

namespace pellar {

// A rectangle in a window's content, in points from its lower left corner, y upward.
struct WindowFrame {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  friend bool operator==(const WindowFrame&, const WindowFrame&) = default;
};

enum class LabelWeight { regular, semibold };
enum class TextColor { label, secondaryLabel };

// Text that only the program changes. UTF-8, never markup.
struct WindowLabel {
  std::string id = {};  // the name under which its text can be changed
  std::string text = {};
  double fontSize = 13;
  LabelWeight weight = LabelWeight::regular;
  TextColor color = TextColor::label;
  bool centred = false;
  double wrapWidth = 0;  // points; 0 for a single line, unless `frame` says how wide it is
  int maximumLines = 0;  // 0 for any number
  std::optional<WindowFrame> frame = std::nullopt;
};

struct WindowSpacer {
  double height = 0;
};

// Text to read, with a bezel and a vertical scroller; cannot be edited.
struct WindowTextBox {
  std::string text;
  double height = 0;
  double inset = 0;  // between the border and the text
};

enum class ButtonBezel { rounded, inlined };

struct WindowButton {
  std::string title;
  // May destroy the window.
  std::function<void()> handler;
  bool isDefault = false;  // Return presses it, unless another rounded one has the keyboard
  ButtonBezel bezel = ButtonBezel::rounded;
  std::optional<WindowFrame> frame = std::nullopt;
};

// Buttons from left to right.
struct WindowButtonRow {
  double spacing = 0;
  std::vector<WindowButton> buttons;
};

using WindowElement = std::variant<WindowLabel, WindowSpacer, WindowTextBox, WindowButton, WindowButtonRow>;

enum class WindowLevel { normal = 0, modalPanel = 8 };  // NSWindowLevel
enum class StackAlignment { centre, trailing };

struct WindowInsets {
  double top = 0;
  double left = 0;
  double bottom = 0;
  double right = 0;
  friend bool operator==(const WindowInsets&, const WindowInsets&) = default;
};

// A simple window: a column of elements, top to bottom. An element with a frame of its own stands outside the
// column.
struct WindowDescription {
  std::string title;
  Size contentSize;
  bool closable = true;
  WindowLevel level = WindowLevel::normal;
  StackAlignment alignment = StackAlignment::centre;
  double spacing = 0;
  bool columnReachesBottom = false;  // else it ends below its last element; neither moves an element
  WindowInsets insets = {};
  std::vector<WindowElement> elements;
};

// A window made from a description, centred on its screen and not yet shown. Destroying it closes it, also
// from inside a handler of one of its buttons.
class PlainWindow {
 public:
  virtual ~PlainWindow() = default;

  // Shows it in front of its level and gives it the keyboard, when this program is in front.
  virtual void makeKeyAndOrderFront() = 0;
  // No key presses the default button until so long after the window gets the keyboard, or from now where it
  // has it: what is typed then was meant for another window. The mouse does.
  virtual void restDefaultButton(std::chrono::milliseconds time) = 0;
  // Takes the window off the screen. It can be shown again.
  virtual void close() = 0;
  [[nodiscard]] virtual bool isVisible() const = 0;
  // Changes the text of the label with that id; nothing happens where there is none.
  virtual void setText(const std::string& id, const std::string& text) = 0;
  // The user closed it. Called from the main loop.
  [[nodiscard]] virtual Subscription onClosed(std::function<void()> callback) = 0;
};

// Makes the few ordinary windows of the program. Main thread only.
class Windows {
 public:
  virtual ~Windows() = default;
  [[nodiscard]] virtual std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) = 0;
};

}  // namespace pellar
