#pragma once

// What the strip's tools and the card's buttons show where they have no word.
namespace pellar::tool {

inline constexpr const char* autoSaveOn = "\u25CF Auto-save";
inline constexpr const char* autoSaveOff = "\u25CB Auto-save";
inline constexpr const char* newDocument = "+";
inline constexpr const char* overflow = "\u22EF";
inline constexpr const char* minimize = "\u2013";
inline constexpr const char* zoom = "\u25A1";
inline constexpr const char* closeWindow = "\u2715";

}  // namespace pellar::tool
