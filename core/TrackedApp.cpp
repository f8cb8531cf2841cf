#include "core/TrackedApp.h"

#include <array>
#include <cstddef>

namespace pellar {

namespace {

constexpr std::array<RGB, 8> palette{{{0.36, 0.42, 0.75},
                                      {0.20, 0.55, 0.55},
                                      {0.60, 0.40, 0.70},
                                      {0.75, 0.45, 0.20},
                                      {0.30, 0.55, 0.35},
                                      {0.70, 0.30, 0.40},
                                      {0.35, 0.50, 0.65},
                                      {0.55, 0.55, 0.30}}};

}  // namespace

TrackedApp TrackedApp::of(OfficeApp app) {
  return {std::string(bundleID(app)), std::string(displayName(app)), app};
}

RGB TrackedApp::accentRGB() const {
  if (office) return pellar::accentRGB(*office);
  return palette[static_cast<std::size_t>(stableHash(id)) % palette.size()];
}

std::int64_t TrackedApp::stableHash(std::string_view text) {
  // Unsigned, since the hash wraps; the low bits are the same as with signed numbers.
  std::uint64_t hash = 5381;
  for (const char byte : text) hash = hash * 33 + static_cast<unsigned char>(byte);
  return static_cast<std::int64_t>(hash & 0x7FFFFFFF);
}

}  // namespace pellar
