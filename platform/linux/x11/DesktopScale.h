#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pellar {

// What is said of a desktop's scale, as it stands there. Absent: not set.
struct ScaleStatements {
  std::optional<std::string> screenFactors{};  // QT_SCREEN_SCALE_FACTORS: "eDP-1=2;HDMI-1=1" or "2;1"
  std::optional<std::string> toolkitFactor{};  // QT_SCALE_FACTOR
  std::optional<std::string> gdkScale{};       // GDK_SCALE
  std::string resources{};                     // RESOURCE_MANAGER, with a line "Xft.dpi: 192"
  friend bool operator==(const ScaleStatements&, const ScaleStatements&) = default;

  // Those of the environment; no resources.
  static ScaleStatements ofEnvironment();
};

// How many pixels a point has on each monitor of a desktop: what is said of the monitor, else of the whole
// desktop, else as many times 96 as the fonts have dots to an inch. Between 1 and 4, in quarters, so that a
// strip's height is a whole number of pixels.
class DesktopScale {
 public:
  explicit DesktopScale(const ScaleStatements& statements);

  // Of the monitor with this name, which is so many down the list of monitors.
  [[nodiscard]] double of(std::string_view monitor, std::size_t index) const;
  // The first statement that says nothing that can be meant, for the log; absent when all do.
  [[nodiscard]] const std::optional<std::string>& nonsense() const { return nonsense_; }

 private:
  struct Factor {
    std::string monitor;  // empty: named by its place in the list
    std::optional<double> value;
  };

  [[nodiscard]] std::optional<double> read(std::string_view name, std::string_view value);
  void readScreenFactors(std::string_view list);

  std::vector<Factor> ofMonitors_;
  double ofDesktop_ = 1;
  std::optional<std::string> nonsense_;
};

}  // namespace pellar
