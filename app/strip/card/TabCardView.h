#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/strip/tabs/TabItem.h"
#include "platform/View.h"

namespace pellar {

// What the hover card shows of a tab: the file's name, its folder, and three window buttons. Main thread
// only.
class TabCardView final : public View {
 public:
  using ActionHandler = std::function<void(WindowId, StripAction)>;

  // `onAction` is called when a button is pressed. It may do away with the view.
  TabCardView(ViewHost& host, ActionHandler onAction);

  std::function<void(bool inside)> onHoverChanged;  // the pointer entered or left the card
  std::function<void()> onActed;                    // after every press of a button

  void set(WindowId id, std::string title, std::optional<std::string> subtitle);

  // The card's width for its content: room for the title beside the buttons, within limits.
  [[nodiscard]] double preferredWidth() const;
  // The title does not fit beside the buttons of a card of that width.
  [[nodiscard]] bool titleNeedsTwoLines() const;
  // The buttons from left to right.
  [[nodiscard]] std::vector<std::pair<ViewRect, StripAction>> buttonRects() const;

  void layout() override {}
  void draw(Canvas& canvas, const ViewRect& dirty) override;
  void mouseDown(const MouseEvent& event) override;
  void mouseDragged(const MouseEvent&) override {}
  void mouseUp(const MouseEvent&) override {}
  void rightMouseDown(const MouseEvent&) override {}
  void otherMouseDown(const MouseEvent&) override {}
  void mouseEntered() override;
  void mouseMoved(const MouseEvent& event) override;
  void mouseExited() override;

 private:
  [[nodiscard]] std::optional<StripAction> actionAt(ViewPoint point) const;
  void setHover(std::optional<StripAction> action);

  ViewHost& host_;
  ActionHandler onAction_;
  WindowId id_ = 0;
  std::string title_;
  std::optional<std::string> subtitle_;
  std::optional<StripAction> hover_;
  std::shared_ptr<int> alive_ = std::make_shared<int>(0);
};

}  // namespace pellar
