#include "tests/simulation/PanelWatch.h"

#include <algorithm>
#include <utility>

#include "tests/simulation/PanelSizes.h"

namespace pellar {
namespace {

constexpr Size dropdownSize{480, 300};
constexpr Size cardSize{200, 58};

}  // namespace

const SimPanel* PanelWatch::shown(Size contentSize) const {
  for (const auto* panel : mac_.panels().all())
    if (panel->style().contentSize == contentSize && panel->isVisible()) return panel;
  return nullptr;
}

std::optional<std::string> PanelWatch::compare() const {
  const bool dropdown = shown(dropdownSize) != nullptr;
  if (mac_.eventMonitors().watched() != dropdown)
    return "clicks are watched without the drop-down, or not with it";
  if (mac_.strip().visible()) return std::nullopt;
  if (dropdown) return "the drop-down stands without the strip";
  if (shown(cardSize) != nullptr) return "the card stands without the strip";
  if (shown(pickerSize) != nullptr) return "the picker stands without the strip";
  return std::nullopt;
}

std::optional<std::string> PanelWatch::cardTitle() const {
  const auto* card = shown(cardSize);
  if (card == nullptr) return std::nullopt;
  const auto& items = card->drawing().items();
  const auto title = std::ranges::find_if(items, [](const auto& item) { return item.isText(); });
  return title == items.end() ? std::string() : title->text;
}

bool PanelWatch::dropdownStays(const SimWindow& front) {
  if (shown(dropdownSize) == nullptr) {
    searchedOver_.reset();
    return false;
  }
  const auto before = std::exchange(searchedOver_, front.id());
  return before && *before != front.id();
}

bool PanelWatch::anyStays() const {
  return shown(cardSize) != nullptr || shown(pickerSize) != nullptr;
}

}  // namespace pellar
