#pragma once

#include <functional>
#include <string>

#include "core/Geometry.h"

namespace pellar {

// The native single-line search field inside a view: dark, rounded (radius 8), small, system font 12, no
// focus ring. Main thread only.
class SearchField {
 public:
  // Handles a key command ("moveDown:", "insertNewline:", "cancelOperation:", ...); false leaves it to the
  // field.
  using CommandHandler = std::function<bool(const std::string& selector)>;

  virtual ~SearchField() = default;

  [[nodiscard]] virtual std::string text() const = 0;  // UTF-8
  // Replaces the text. Not typing: onChange is not called.
  virtual void setText(const std::string& text) = 0;
  virtual void setPlaceholder(const std::string& text) = 0;

  // Place in the coordinates of the view that holds the field.
  virtual void setFrame(const ViewRect& frame) = 0;
  [[nodiscard]] virtual ViewRect frame() const = 0;
  virtual void setHidden(bool hidden) = 0;
  [[nodiscard]] virtual bool isHidden() const = 0;

  // Makes the field the one that receives the keys of its panel, unless it is hidden. A field that is hidden
  // receives them no longer.
  virtual void focus() = 0;

  // A click in the field, before it takes the focus.
  virtual void setOnActivate(std::function<void()> callback) = 0;
  // The user changed the text.
  virtual void setOnChange(std::function<void()> callback) = 0;
  virtual void setOnCommand(CommandHandler handler) = 0;
};

}  // namespace pellar
