#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace pellar {

// A colour in device RGB, each part in 0...1.
struct RGB {
  double red = 0;
  double green = 0;
  double blue = 0;
  friend bool operator==(const RGB&, const RGB&) = default;
};

// The Office applications known by name. Their order here is the order wherever they are listed.
enum class OfficeApp { word, excel, powerpoint, outlook };

inline constexpr std::array allOfficeApps{OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint,
                                          OfficeApp::outlook};

// The name under which the application is stored and encoded.
std::string_view rawValue(OfficeApp app);
// The bundle identifier exactly as the platform reports it.
std::string_view bundleID(OfficeApp app);
// The short name shown to the user.
std::string_view displayName(OfficeApp app);
// The name in AppleScript's `tell application "..."`.
std::string_view scriptName(OfficeApp app);
// The AppleScript class of the application's document; absent for Outlook, which has none.
std::optional<std::string_view> docNoun(OfficeApp app);
// The file extensions the application owns, lower case and without the dot.
std::span<const std::string_view> extensions(OfficeApp app);
// The brand colour that tints tabs and icons.
RGB accentRGB(OfficeApp app);

// Exact, case-sensitive; absent for anything that is not one of the four.
std::optional<OfficeApp> officeAppWithRawValue(std::string_view rawValue);
std::optional<OfficeApp> officeAppWithBundleID(std::string_view bundleID);

}  // namespace pellar
