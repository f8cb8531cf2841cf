#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/OfficeApp.h"

namespace pellar {
namespace {

std::vector<std::string> listed(OfficeApp app) {
  const auto all = extensions(app);
  return {all.begin(), all.end()};
}

using Names = std::vector<std::string>;

TEST(OfficeApp, ListsTheFourInTheirOrder) {
  EXPECT_EQ(std::vector(allOfficeApps.begin(), allOfficeApps.end()),
            (std::vector{OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint, OfficeApp::outlook}));
}

TEST(OfficeApp, Word) {
  const OfficeApp app = OfficeApp::word;
  EXPECT_EQ(rawValue(app), "word");
  EXPECT_EQ(bundleID(app), "com.microsoft.Word");
  EXPECT_EQ(displayName(app), "Word");
  EXPECT_EQ(scriptName(app), "Microsoft Word");
  EXPECT_EQ(docNoun(app), "document");
  EXPECT_EQ(accentRGB(app), (RGB{0.17, 0.34, 0.60}));
  EXPECT_EQ(listed(app), (Names{"doc", "docx", "docm", "dot", "dotx", "dotm", "rtf", "odt"}));
}

TEST(OfficeApp, Excel) {
  const OfficeApp app = OfficeApp::excel;
  EXPECT_EQ(rawValue(app), "excel");
  EXPECT_EQ(bundleID(app), "com.microsoft.Excel");
  EXPECT_EQ(displayName(app), "Excel");
  EXPECT_EQ(scriptName(app), "Microsoft Excel");
  EXPECT_EQ(docNoun(app), "workbook");
  EXPECT_EQ(accentRGB(app), (RGB{0.13, 0.45, 0.27}));
  EXPECT_EQ(listed(app), (Names{"xls", "xlsx", "xlsm", "xlsb", "xlt", "xltx", "xltm", "csv", "ods"}));
}

TEST(OfficeApp, PowerPoint) {
  const OfficeApp app = OfficeApp::powerpoint;
  EXPECT_EQ(rawValue(app), "powerpoint");
  EXPECT_EQ(bundleID(app), "com.microsoft.Powerpoint");
  EXPECT_EQ(displayName(app), "PowerPoint");
  EXPECT_EQ(scriptName(app), "Microsoft PowerPoint");
  EXPECT_EQ(docNoun(app), "presentation");
  EXPECT_EQ(accentRGB(app), (RGB{0.82, 0.28, 0.15}));
  EXPECT_EQ(listed(app), (Names{"ppt", "pptx", "pptm", "pot", "potx", "potm", "pps", "ppsx", "odp"}));
}

TEST(OfficeApp, OutlookHasNoDocumentClass) {
  const OfficeApp app = OfficeApp::outlook;
  EXPECT_EQ(rawValue(app), "outlook");
  EXPECT_EQ(bundleID(app), "com.microsoft.Outlook");
  EXPECT_EQ(displayName(app), "Outlook");
  EXPECT_EQ(scriptName(app), "Microsoft Outlook");
  EXPECT_EQ(docNoun(app), std::nullopt);
  EXPECT_EQ(accentRGB(app), (RGB{0.00, 0.47, 0.83}));
  EXPECT_EQ(listed(app), (Names{"msg", "eml", "oft"}));
}

TEST(OfficeApp, IsFoundByItsOwnNames) {
  for (const OfficeApp app : allOfficeApps) {
    EXPECT_EQ(officeAppWithRawValue(rawValue(app)), app);
    EXPECT_EQ(officeAppWithBundleID(bundleID(app)), app);
  }
}

TEST(OfficeApp, IsNotFoundByNamesThatDifferInCase) {
  EXPECT_EQ(officeAppWithRawValue("Word"), std::nullopt);
  EXPECT_EQ(officeAppWithBundleID("com.microsoft.PowerPoint"), std::nullopt);
  EXPECT_EQ(officeAppWithBundleID("com.microsoft.word"), std::nullopt);
}

TEST(OfficeApp, IsNotFoundByAnythingElse) {
  using namespace std::string_view_literals;
  for (const std::string_view other :
       {""sv, "word "sv, "word\0"sv, "wor"sv, "com.example.Editor"sv, "\xFF"sv}) {
    EXPECT_EQ(officeAppWithRawValue(other), std::nullopt);
    EXPECT_EQ(officeAppWithBundleID(other), std::nullopt);
  }
}

}  // namespace
}  // namespace pellar
