#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"

namespace pellar {

// Looks at the card, the picker and the drop-down: none may stand for what is gone.
class PanelWatch {
 public:
  explicit PanelWatch(SimMac& mac) : mac_(mac) {}

  // The program was started anew.
  void started() { searchedOver_.reset(); }

  // What is wrong, by itself.
  [[nodiscard]] std::optional<std::string> compare() const;
  // The card's title; absent while there is no card.
  [[nodiscard]] std::optional<std::string> cardTitle() const;
  // Whether the drop-down stays over another window than it was opened over. Takes the front window for the
  // next time.
  [[nodiscard]] bool dropdownStays(const SimWindow& front);
  // One that stays after the pointer and the program have been left alone for long.
  [[nodiscard]] bool anyStays() const;

 private:
  [[nodiscard]] const SimPanel* shown(Size contentSize) const;

  SimMac& mac_;
  std::optional<WindowId> searchedOver_;  // the front window when the drop-down was first seen
};

}  // namespace pellar
