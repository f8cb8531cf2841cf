#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"

namespace pellar {

inline constexpr std::chrono::milliseconds cardDelay{300};
inline constexpr std::chrono::milliseconds closeDelay{350};

// The panels that hovering makes, as a user sees them.
class HoverReader {
 public:
  explicit HoverReader(SimMac& mac) : mac_(mac) {}

  // Null until it is made.
  [[nodiscard]] SimPanel* card() const { return panel({200, 58}); }
  [[nodiscard]] SimPanel* picker() const { return panel({372, 150}); }
  [[nodiscard]] bool cardShown() const { return card() != nullptr && card()->isVisible(); }
  [[nodiscard]] bool pickerShown() const { return picker() != nullptr && picker()->isVisible(); }

  // The texts of the card as they can be read: the title, the folder if any, the buttons.
  [[nodiscard]] std::vector<std::string> cardTexts() const {
    std::vector<std::string> texts;
    if (!cardShown()) return texts;
    for (const auto& item : card()->drawing().items())
      if (item.isText()) texts.push_back(item.shown);
    return texts;
  }
  // The middle of one of the card's buttons, on the screen.
  [[nodiscard]] ScreenPoint cardButton(const std::string& text) const {
    for (const auto& item : card()->drawing().items())
      if (item.kind == DrawnItem::Kind::centeredText && item.text == text)
        return onScreen(*card(), item.center());
    ADD_FAILURE() << "the card has no button " << text;
    return {};
  }
  static ScreenPoint onScreen(const SimPanel& panel, ViewPoint point) {
    return {panel.frame().x + point.x, panel.frame().maxY() - point.y};
  }

 private:
  [[nodiscard]] SimPanel* panel(Size contentSize) const {
    const auto all = mac_.panels().all();
    const auto found = std::ranges::find_if(
        all, [&](const SimPanel* each) { return each->style().contentSize == contentSize; });
    return found == all.end() ? nullptr : *found;
  }

  SimMac& mac_;
};

}  // namespace pellar
