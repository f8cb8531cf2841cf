#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace pellar {

// The theme's name in the settings that a desktop publishes for its programs (the property
// _XSETTINGS_SETTINGS); absent where they name none, or are not what they should be.
[[nodiscard]] std::optional<std::string> themeIn(std::span<const std::byte> settings);

// Whether a theme of this name is meant for users who need more contrast.
[[nodiscard]] bool increasesContrast(std::string_view theme);

}  // namespace pellar
