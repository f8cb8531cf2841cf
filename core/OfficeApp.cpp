#include "core/OfficeApp.h"

#include <cstddef>

namespace pellar {

namespace {

using namespace std::string_view_literals;

constexpr std::array wordExtensions{"doc"sv,  "docx"sv, "docm"sv, "dot"sv,
                                    "dotx"sv, "dotm"sv, "rtf"sv,  "odt"sv};
constexpr std::array excelExtensions{"xls"sv,  "xlsx"sv, "xlsm"sv, "xlsb"sv, "xlt"sv,
                                     "xltx"sv, "xltm"sv, "csv"sv,  "ods"sv};
constexpr std::array powerpointExtensions{"ppt"sv,  "pptx"sv, "pptm"sv, "pot"sv, "potx"sv,
                                          "potm"sv, "pps"sv,  "ppsx"sv, "odp"sv};
constexpr std::array outlookExtensions{"msg"sv, "eml"sv, "oft"sv};

struct Facts {
  std::string_view rawValue;
  std::string_view bundleID;
  std::string_view displayName;
  std::string_view scriptName;
  std::optional<std::string_view> docNoun;
  std::span<const std::string_view> extensions;
  RGB accent;
};

// The platform reports PowerPoint with a lower-case p in the middle.
constexpr std::array<Facts, allOfficeApps.size()> facts{
    {{"word", "com.microsoft.Word", "Word", "Microsoft Word", "document", wordExtensions, {0.17, 0.34, 0.60}},
     {"excel",
      "com.microsoft.Excel",
      "Excel",
      "Microsoft Excel",
      "workbook",
      excelExtensions,
      {0.13, 0.45, 0.27}},
     {"powerpoint",
      "com.microsoft.Powerpoint",
      "PowerPoint",
      "Microsoft PowerPoint",
      "presentation",
      powerpointExtensions,
      {0.82, 0.28, 0.15}},
     {"outlook",
      "com.microsoft.Outlook",
      "Outlook",
      "Microsoft Outlook",
      std::nullopt,
      outlookExtensions,
      {0.00, 0.47, 0.83}}}};

const Facts& of(OfficeApp app) {
  return facts[static_cast<std::size_t>(app)];
}

}  // namespace

std::string_view rawValue(OfficeApp app) {
  return of(app).rawValue;
}
std::string_view bundleID(OfficeApp app) {
  return of(app).bundleID;
}
std::string_view displayName(OfficeApp app) {
  return of(app).displayName;
}
std::string_view scriptName(OfficeApp app) {
  return of(app).scriptName;
}
std::optional<std::string_view> docNoun(OfficeApp app) {
  return of(app).docNoun;
}
std::span<const std::string_view> extensions(OfficeApp app) {
  return of(app).extensions;
}
RGB accentRGB(OfficeApp app) {
  return of(app).accent;
}

std::optional<OfficeApp> officeAppWithRawValue(std::string_view raw) {
  for (const OfficeApp app : allOfficeApps) {
    if (rawValue(app) == raw) return app;
  }
  return std::nullopt;
}

std::optional<OfficeApp> officeAppWithBundleID(std::string_view identifier) {
  for (const OfficeApp app : allOfficeApps) {
    if (bundleID(app) == identifier) return app;
  }
  return std::nullopt;
}

}  // namespace pellar
