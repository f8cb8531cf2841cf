#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/panels/ChoiceView.h"
#include "app/strip/tabs/StripAction.h"
#include "app/strip/tabs/StripWords.h"
#include "platform/Accessibility.h"

namespace pellar {

// What the hover card shows of a tab: the file's name, its folder, and three window buttons. Main thread
// only.
class TabCardView final : public ChoiceView<StripAction> {
 public:
  using ActionHandler = std::function<void(WindowId, StripAction)>;

  // `onAction` is called when a button is pressed. It may do away with the view.
  TabCardView(ViewHost& host, ActionHandler onAction);

  // Shows this tab from now on; without a subtitle the title stands alone.
  void set(WindowId id, std::string title, std::optional<std::string> subtitle);

  // The card's width for its content: room for the title beside the buttons, within limits.
  [[nodiscard]] double preferredWidth() const;
  // The title does not fit beside the buttons of the widest card.
  [[nodiscard]] bool titleNeedsTwoLines() const;
  // The buttons from left to right.
  [[nodiscard]] std::vector<std::pair<ViewRect, StripAction>> buttonRects() const;

  void draw(Canvas& canvas, const ViewRect& dirty) override;

 private:
  [[nodiscard]] Parts parts() const override { return buttonRects(); }
  void choose(StripAction action) override;
  [[nodiscard]] AccessibleElement describeWhole() const override;
  [[nodiscard]] std::string_view name(StripAction action) const override { return StripWords::name(action); }
  [[nodiscard]] std::string_view help(StripAction action) const override { return StripWords::help(action); }
  // The width of a card with room for the whole title beside the buttons.
  [[nodiscard]] double widthForTitle() const;
  // Where the texts stand.
  [[nodiscard]] ViewRect titleRect() const;
  [[nodiscard]] ViewRect subtitleRect() const;

  ActionHandler onAction_;
  WindowId id_ = 0;
  std::string title_;
  std::optional<std::string> subtitle_;
};

}  // namespace pellar
