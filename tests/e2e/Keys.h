#pragma once

#include <cstdint>

namespace pellar::e2e {

// The keys that stories press, by the X server's symbols. One with a letter or a digit on it is that
// character.
inline constexpr std::uint32_t backspaceKey = 0xff08;
inline constexpr std::uint32_t tabKey = 0xff09;
inline constexpr std::uint32_t returnKey = 0xff0d;
inline constexpr std::uint32_t escapeKey = 0xff1b;
inline constexpr std::uint32_t leftKey = 0xff51;
inline constexpr std::uint32_t upKey = 0xff52;
inline constexpr std::uint32_t rightKey = 0xff53;
inline constexpr std::uint32_t downKey = 0xff54;
inline constexpr std::uint32_t numLockKey = 0xff7f;
inline constexpr std::uint32_t f9Key = 0xffc6;
inline constexpr std::uint32_t f10Key = 0xffc7;
inline constexpr std::uint32_t shiftKey = 0xffe1;
inline constexpr std::uint32_t controlKey = 0xffe3;
inline constexpr std::uint32_t capsLockKey = 0xffe5;
inline constexpr std::uint32_t altKey = 0xffe9;
inline constexpr std::uint32_t superKey = 0xffeb;
inline constexpr std::uint32_t spaceKey = 0x20;

}  // namespace pellar::e2e
