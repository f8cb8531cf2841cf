#include "platform/linux/system/ToolkitScale.h"

#include <algorithm>

namespace pellar {

ToolkitScale::ToolkitScale(const std::vector<X11Density::Monitor>& monitors) {
  const double first = monitors.empty() ? 1 : monitors.front().scale;
  const bool isUniform =
      std::ranges::all_of(monitors, [first](const auto& each) { return each.scale == first; });
  QByteArray factors;
  for (const auto& each : monitors)
    factors += QByteArray::fromStdString(each.name) + '=' + QByteArray::number(each.scale) + ';';
  using Value = TemporaryVariable::Value;
  // At one and the same scale the names do not matter, by which the toolkit might know the monitors
  // otherwise.
  variables_.emplace_back("QT_ENABLE_HIGHDPI_SCALING", Value(isUniform ? "0" : "1"));
  variables_.emplace_back("QT_SCREEN_SCALE_FACTORS", isUniform ? Value() : Value(factors));
  variables_.emplace_back("QT_SCALE_FACTOR",
                          isUniform && first != 1 ? Value(QByteArray::number(first)) : Value());
  // Its fonts have been made larger with the rest.
  if (!isUniform || first != 1) variables_.emplace_back("QT_FONT_DPI", Value("96"));
}

}  // namespace pellar
