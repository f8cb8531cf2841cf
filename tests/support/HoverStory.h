#pragma once

#include <string>

#include "tests/support/MenuStory.h"
#include "tests/support/PanelReader.h"

namespace pellar {

// Stories of what comes up where the pointer rests on the strip.
class HoverStory : public StripStory {
 protected:
  void restOnTab(const std::string& label) {
    strip().hoverTab(label);
    mac.advance(cardDelay);
  }
  void pressOnCard(const std::string& button) { mac.pointer().click(hover.cardButton(button)); }
  void restOnZoom() { strip().hoverTool(tool::zoom); }
  void pick(double unitX, double unitY, ViewRect miniature) {
    mac.pointer().click(PanelReader::onScreen(
        *hover.picker(), {miniature.x + unitX * miniature.width, miniature.y + unitY * miniature.height}));
  }
  [[nodiscard]] ScreenRect tabOnScreen(double index) {
    return {strip().frame().x + 6 + index * 184, strip().frame().y + 3, 180, 26};
  }

  PanelReader hover{mac};
  // What the strip leaves of the simulated screen.
  static constexpr AxRect area{0, 57, 1440, 843};
};

}  // namespace pellar
