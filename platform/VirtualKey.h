#pragma once

#include <cstdint>

// The virtual codes of the keys that mean something here, on every keyboard the same (kVK_..., Events.h).
namespace pellar::VirtualKey {

inline constexpr std::uint16_t returnKey = 36;
inline constexpr std::uint16_t tab = 48;
inline constexpr std::uint16_t backspace = 51;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t pageUp = 116;
inline constexpr std::uint16_t pageDown = 121;
inline constexpr std::uint16_t down = 125;
inline constexpr std::uint16_t up = 126;

}  // namespace pellar::VirtualKey
