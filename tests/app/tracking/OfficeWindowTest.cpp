#include <gtest/gtest.h>

#include <limits>

#include "app/tracking/AX.h"
#include "app/tracking/OfficeWindow.h"
#include "platform/sim/applications/SimAccessibility.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimElement.h"
#include "platform/sim/faults/FaultyAccessibility.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {
namespace {

class OfficeWindowTest : public testing::Test {
 protected:
  OfficeWindowTest() { window->document = "file:///Users/ann/My%20Plan.txt"; }
  [[nodiscard]] OfficeWindow record(const TrackedApp& app = {"org.example.editor", "Editor", std::nullopt}) {
    return {accessibility, element, app, window->pid};
  }

  SimMainLoop loop;
  SimDesktop desktop{loop};
  SimAccessibility accessibility{desktop, loop};
  SimApplicationPointer editor = desktop.launch("org.example.editor", "Editor", ActivationPolicy::regular);
  SimWindowPointer window = desktop.open(*editor, "Plan", {10, 20, 640, 480}, "AXStandardWindow");
  Element element = SimElement::ofWindow(window);
};

TEST_F(OfficeWindowTest, AnAttributeOfAnotherTypeIsAbsent) {
  EXPECT_EQ(AX::value<std::string>(accessibility, element, "AXTitle"), "Plan");
  EXPECT_EQ(AX::value<bool>(accessibility, element, "AXTitle"), std::nullopt);
  window->quirks.mistypedAttributes = {"AXTitle"};
  EXPECT_EQ(AX::value<std::string>(accessibility, element, "AXTitle"), std::nullopt);
  EXPECT_EQ(AX::value<std::string>(accessibility, element, "AXNoSuchThing"), std::nullopt);
}

TEST_F(OfficeWindowTest, AFrameNeedsBothItsParts) {
  EXPECT_EQ(AX::frame(accessibility, element), (AxRect{10, 20, 640, 480}));
  window->quirks.refusedAttributes = {"AXSize"};
  EXPECT_EQ(AX::frame(accessibility, element), std::nullopt);
  window->quirks.refusedAttributes = {"AXPosition"};
  EXPECT_EQ(AX::frame(accessibility, element), std::nullopt);
  window->quirks.refusedAttributes.clear();
  window->quirks.mistypedAttributes = {"AXSize"};
  EXPECT_EQ(AX::frame(accessibility, element), std::nullopt);
}

TEST_F(OfficeWindowTest, APlaceOrSizeThatIsNoFiniteNumberIsAbsent) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double strange : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}) {
    for (const AxPoint position : {AxPoint{strange, 20}, AxPoint{10, strange}}) {
      FaultyAccessibility faulty(accessibility);
      faulty.answer("AXPosition", position);
      EXPECT_EQ(AX::frame(faulty, element), std::nullopt) << position.x << ", " << position.y;
    }
    for (const Size size : {Size{strange, 480}, Size{640, strange}}) {
      FaultyAccessibility faulty(accessibility);
      faulty.answer("AXSize", size);
      EXPECT_EQ(AX::frame(faulty, element), std::nullopt) << size.width << " x " << size.height;
    }
  }
}

TEST_F(OfficeWindowTest, AFrameThatIsNoFiniteNumberAnyMoreIsKeptAsItWas) {
  FaultyAccessibility faulty(accessibility);
  OfficeWindow made = record();
  faulty.answer("AXPosition", AxPoint{std::numeric_limits<double>::quiet_NaN(), 20});
  made.refresh(faulty);
  EXPECT_EQ(made.frame, (AxRect{10, 20, 640, 480}));

  faulty.repair();
  desktop.setFrame(*window, {50, 60, 300, 300});
  made.refresh(faulty);
  EXPECT_EQ(made.frame, (AxRect{50, 60, 300, 300}));
}

TEST_F(OfficeWindowTest, EverythingOfADestroyedWindowIsAbsent) {
  desktop.destroy(window);
  for (const auto* name : {"AXTitle", "AXSubrole", "AXPosition", "AXSize", "AXMinimized", "AXCloseButton"})
    EXPECT_EQ(accessibility.attribute(element, name), std::nullopt) << name;
  EXPECT_FALSE(AX::pressCloseButton(accessibility, element));
}

TEST_F(OfficeWindowTest, ANewRecordHasTheWindowsSnapshotAndNoPath) {
  desktop.setMinimised(window, true);
  const OfficeWindow made = record();
  EXPECT_EQ(made.title, "Plan");
  EXPECT_EQ(made.frame, (AxRect{10, 20, 640, 480}));
  EXPECT_TRUE(made.minimized);
  EXPECT_FALSE(made.fullscreen);
  EXPECT_EQ(made.path, std::nullopt);
  EXPECT_EQ(made.id(), element.hash());
}

TEST_F(OfficeWindowTest, ANewRecordOfASilentWindowIsEmpty) {
  window->quirks.refusedAttributes = {"AXTitle", "AXSize", "AXMinimized", "AXFullScreen"};
  const OfficeWindow made = record();
  EXPECT_EQ(made.title, "");
  EXPECT_EQ(made.frame, AxRect{});
  EXPECT_FALSE(made.minimized);
  EXPECT_FALSE(made.fullscreen);
}

TEST_F(OfficeWindowTest, TitleAndFrameThatCannotBeReadAnyMoreAreKept) {
  OfficeWindow made = record();
  desktop.setTitle(*window, "Other");
  desktop.setFrame(*window, {50, 60, 300, 300});
  window->quirks.refusedAttributes = {"AXTitle", "AXPosition"};
  made.refresh(accessibility);
  EXPECT_EQ(made.title, "Plan");
  EXPECT_EQ(made.frame, (AxRect{10, 20, 640, 480}));

  window->quirks.refusedAttributes.clear();
  desktop.changedSilently();
  made.refresh(accessibility);
  EXPECT_EQ(made.title, "Other");
  EXPECT_EQ(made.frame, (AxRect{50, 60, 300, 300}));
}

TEST_F(OfficeWindowTest, FlagsThatCannotBeReadAnyMoreAreFalse) {
  desktop.setMinimised(window, true);
  desktop.setFullScreen(window, true, {0, 0, 1440, 900});
  OfficeWindow made = record();
  EXPECT_TRUE(made.minimized);
  EXPECT_TRUE(made.fullscreen);
  window->quirks.refusedAttributes = {"AXMinimized", "AXFullScreen"};
  made.refresh(accessibility);
  EXPECT_FALSE(made.minimized);
  EXPECT_FALSE(made.fullscreen);
}

TEST_F(OfficeWindowTest, ADocumentsFileIsLearnedOnceAndDecoded) {
  OfficeWindow made = record();
  made.refresh(accessibility);
  EXPECT_EQ(made.path, "/Users/ann/My Plan.txt");
  window->document = "file:///elsewhere";
  desktop.changedSilently();
  made.refresh(accessibility);
  EXPECT_EQ(made.path, "/Users/ann/My Plan.txt");
}

TEST_F(OfficeWindowTest, ADocumentThatIsNoFileGivesNoPathUntilItIsOne) {
  window->document = "https://example.org/plan";
  OfficeWindow made = record();
  made.refresh(accessibility);
  EXPECT_EQ(made.path, std::nullopt);
  window->document = "file:///saved";
  desktop.changedSilently();
  made.refresh(accessibility);
  EXPECT_EQ(made.path, "/saved");
}

TEST_F(OfficeWindowTest, AWindowWithoutAKnownFileIsNotAskedWhichOneItShows) {
  OfficeWindow made = record();
  EXPECT_EQ(made.askPath(accessibility), std::nullopt) << "though it would say";
  EXPECT_EQ(made.path, std::nullopt);
  EXPECT_FALSE(made.titleNamesPath());
}

TEST_F(OfficeWindowTest, AnOfficeWindowNeverTakesItsPathFromTheDocumentAttribute) {
  OfficeWindow made = record(TrackedApp::of(OfficeApp::word));
  made.refresh(accessibility);
  EXPECT_EQ(made.path, std::nullopt);
}

}  // namespace
}  // namespace pellar
