#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/ListView.h"
#include "platform/View.h"
#include "platform/shared/panel/DrawnList.h"
#include "platform/shared/panel/KeyOwner.h"

namespace pellar {

class X11Panel;

// The list of a panel, drawn into the panel's picture. Its keys come from the editor of the key panel's
// search field, which has the keyboard.
class QtListView final : public ListView, public View, public KeyList {
 public:
  QtListView(X11Panel& panel, const ListStyle& style);
  ~QtListView() override;
  QtListView(const QtListView&) = delete;
  QtListView& operator=(const QtListView&) = delete;

  void reload(std::size_t rowCount, RowProvider row) override;
  [[nodiscard]] std::optional<std::size_t> selectedRow() const override { return list_.selectedRow(); }
  void selectRow(std::size_t row) override;
  void setFrame(const ViewRect& frame) override;
  [[nodiscard]] ViewRect frame() const override { return list_.frame(); }
  [[nodiscard]] ViewRect rowFrame(std::size_t row) const override { return list_.rowFrame(row); }
  void focus() override;
  [[nodiscard]] bool hasFocus() const override;
  void setOnDoubleClick(std::function<void()> callback) override { onDoubleClick_ = std::move(callback); }
  void setOnKeyDown(KeyHandler handler) override { onKeyDown_ = std::move(handler); }

  // For the panel.
  void scroll(int notches);
  void draw(Canvas& canvas, const ViewRect& dirty) override;

  void focusChanged() override { needsDisplay(); }
  bool keyDown(std::uint16_t keyCode) override;

 private:
  void layout() override {}
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent& event) override;
  void mouseUp(const MouseEvent& event) override;
  void rightMouseDown(const MouseEvent& /*event*/) override {}
  void otherMouseDown(const MouseEvent& /*event*/) override {}
  void mouseEntered() override {}
  void mouseMoved(const MouseEvent& /*event*/) override {}
  void mouseExited() override {}
  // Its panel's view tells of it.
  [[nodiscard]] AccessibleElement accessibleElement() const override { return {}; }
  bool perform(AccessibleAction /*action*/, const std::string& /*id*/) override { return false; }

  void needsDisplay();

  X11Panel& panel_;
  DrawnList list_;
  std::function<void()> onDoubleClick_;
  KeyHandler onKeyDown_;
};

}  // namespace pellar
