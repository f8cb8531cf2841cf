#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "platform/ListView.h"
#include "platform/shared/panel/DrawnList.h"
#include "platform/sim/panel/SimViewHost.h"

namespace pellar {

// A list that a test can see in its panel's drawing, click, scroll and work with keys.
class SimListView final : public ListView, public KeyList {
 public:
  SimListView(std::shared_ptr<SimControls> controls, const ListStyle& style);
  ~SimListView() override;
  SimListView(const SimListView&) = delete;
  SimListView& operator=(const SimListView&) = delete;

  void reload(std::size_t rowCount, RowProvider row) override;
  [[nodiscard]] std::optional<std::size_t> selectedRow() const override { return list_.selectedRow(); }
  void selectRow(std::size_t row) override;
  void setFrame(const ViewRect& frame) override;
  [[nodiscard]] ViewRect frame() const override { return list_.frame(); }
  [[nodiscard]] ViewRect rowFrame(std::size_t row) const override { return list_.rowFrame(row); }
  void focus() override;
  [[nodiscard]] bool hasFocus() const override { return controls_->keys.hasFocus(*this); }
  void setOnDoubleClick(std::function<void()> callback) override { onDoubleClick_ = std::move(callback); }
  void setOnKeyDown(KeyHandler handler) override { onKeyDown_ = std::move(handler); }

  // The user's mouse and keys. The program may delete the list in answer to any of them.
  void press(ViewPoint location, int clickCount);
  void drag(ViewPoint location);
  void release();
  void scroll(int notches);
  bool keyDown(std::uint16_t keyCode) override;

  void draw(Canvas& canvas) const { list_.draw(canvas, hasFocus()); }
  void focusChanged() override { needsDisplay(); }

 private:
  void needsDisplay();

  std::shared_ptr<SimControls> controls_;
  DrawnList list_;
  std::function<void()> onDoubleClick_;
  KeyHandler onKeyDown_;
};

}  // namespace pellar
