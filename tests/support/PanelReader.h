#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "tests/support/StripTools.h"

namespace pellar {

inline constexpr std::chrono::milliseconds cardDelay{300};
inline constexpr std::chrono::milliseconds closeDelay{350};

// The panels that come up beside the strip, told apart as a user does.
class PanelReader {
 public:
  explicit PanelReader(SimMac& mac) : mac_(mac) {}

  // Null until it is made.
  [[nodiscard]] SimPanel* dropdown() const { return panel(hasList); }
  // It alone is not of glass.
  [[nodiscard]] SimPanel* picker() const {
    return panel([](const SimPanel& each) { return !each.style().glass; });
  }
  [[nodiscard]] SimPanel* card() const {
    return panel([](const SimPanel& each) { return each.style().glass && !hasList(each); });
  }
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
  static bool hasList(const SimPanel& panel) { return !panel.simHost().controls().lists.empty(); }

  // The strip floats below menus, the others among them.
  template <class Test>
  [[nodiscard]] SimPanel* panel(const Test& isWanted) const {
    for (auto* const each : mac_.panels().all())
      if (each->style().level == PanelLevel::popUpMenu && isWanted(*each)) return each;
    return nullptr;
  }

  SimMac& mac_;
};

}  // namespace pellar
