#include "platform/linux/x11/DesktopScale.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

#include "platform/linux/x11/ConfigText.h"

namespace pellar {
namespace {

using ConfigText::split;
using ConfigText::trimmed;

constexpr double least = 1;
constexpr double most = 4;
constexpr double step = 0.25;
// What no desktop means, however large its dots are.
constexpr double absurd = 20;
constexpr double dotsOfOne = 96;

std::optional<std::string> variable(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr || *value == '\0') return std::nullopt;
  return value;
}

// The value of a resource; the last of several lines counts.
std::optional<std::string_view> resource(std::string_view resources, std::string_view name) {
  std::optional<std::string_view> value;
  split(resources, '\n', [&](std::string_view line) {
    const auto colon = line.find(':');
    if (colon != std::string_view::npos && trimmed(line.substr(0, colon)) == name)
      value = trimmed(line.substr(colon + 1));
  });
  return value;
}

double inSteps(double scale) {
  return std::clamp(std::round(scale / step) * step, least, most);
}

}  // namespace

ScaleStatements ScaleStatements::ofEnvironment() {
  return {variable("QT_SCREEN_SCALE_FACTORS"), variable("QT_SCALE_FACTOR"), variable("GDK_SCALE"), {}};
}

DesktopScale::DesktopScale(const ScaleStatements& statements) {
  if (statements.screenFactors) readScreenFactors(*statements.screenFactors);
  const auto said = [this](std::string_view name, const auto& value) {
    return value ? read(name, *value).value_or(0) : 0;
  };
  const double toolkit = said("QT_SCALE_FACTOR", statements.toolkitFactor);
  const double gdk = said("GDK_SCALE", statements.gdkScale);
  const double fonts = said("Xft.dpi", resource(statements.resources, "Xft.dpi"));
  if (toolkit > 0) {
    ofDesktop_ = inSteps(toolkit);
  } else if (gdk > 1) {
    // It knows whole numbers alone: a desktop at one and a half says 1, and the rest by its fonts.
    ofDesktop_ = inSteps(gdk);
  } else if (fonts > 0) {
    ofDesktop_ = inSteps(fonts);
  }
}

std::optional<double> DesktopScale::read(std::string_view name, std::string_view value) {
  const std::string_view text = trimmed(value);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (name == "Xft.dpi") number /= dotsOfOne;
  if (error == std::errc() && end == text.data() + text.size() && number > 0 && number <= absurd)
    return number;
  constexpr std::size_t longest = 40;
  if (!nonsense_) nonsense_ = std::string(name) + " is " + std::string(value.substr(0, longest));
  return std::nullopt;
}

void DesktopScale::readScreenFactors(std::string_view list) {
  split(list, ';', [this](std::string_view part) {
    // Lists of names end with a separator.
    if (trimmed(part).empty()) return;
    const auto equals = part.rfind('=');
    const bool named = equals != std::string_view::npos;
    const auto value = read("QT_SCREEN_SCALE_FACTORS", named ? part.substr(equals + 1) : part);
    ofMonitors_.push_back({named ? std::string(trimmed(part.substr(0, equals))) : std::string(), value});
  });
}

double DesktopScale::of(std::string_view monitor, std::size_t index) const {
  for (std::size_t i = 0; i < ofMonitors_.size(); ++i) {
    const auto& [name, value] = ofMonitors_[i];
    if (value && (name.empty() ? i == index : name == monitor)) return inSteps(*value);
  }
  return ofDesktop_;
}

}  // namespace pellar
