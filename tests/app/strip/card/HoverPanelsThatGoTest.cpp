#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/HoverStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// The card and the picker never stay for what is gone.
using HoverPanelsThatGo = HoverStory;

TEST_F(HoverPanelsThatGo, AWindowThatClosesBeforeItsCardComesHasACardWithoutEffect) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  strip().hoverTab("Report");
  mac.advance(cardDelay - 1ms);
  report.close();
  mac.advance(1ms);
  for (const char* button : {tool::closeWindow, tool::minimize, tool::zoom}) {
    if (hover.cardShown()) pressOnCard(button);
    EXPECT_TRUE(plan.exists());
    EXPECT_FALSE(plan.isMinimised());
    EXPECT_EQ(plan.frame(), (AxRect{100, 200, 1200, 600}));
  }
}

TEST_F(HoverPanelsThatGo, ACardOfATabOfAnotherApplicationGoesWithIt) {
  auto report = open("Report");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  auto picture = viewer.open("Picture", {100, 200, 1200, 600});
  start();
  restOnTab("Report");
  mac.activate(viewer);
  mac.settle();
  EXPECT_TRUE(stripShown());
  EXPECT_FALSE(hover.cardShown());
  EXPECT_TRUE(report.exists());
}

TEST_F(HoverPanelsThatGo, TheCardOfATabClosedByAMiddleClickGoesAtOnce) {
  auto report = open("Report");
  open("Plan");
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  strip().middleClickTab("Report");
  ASSERT_FALSE(report.exists());
  EXPECT_FALSE(hover.cardShown());
  // Plan's tab took the place under the pointer, which rests.
  const ScreenPoint resting = mac.pointer().location();
  mac.pointer().moveTo({resting.x + 1, resting.y});
  mac.advance(cardDelay);
  EXPECT_EQ(hover.cardTexts().front(), "Plan");
}

TEST_F(HoverPanelsThatGo, ACardThatWaitsDoesNotComeForATabThatIsGone) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnTab("Plan");
  strip().hoverTab("Report");
  report.close();
  mac.settle();
  EXPECT_EQ(hover.cardTexts().front(), "Plan") << "the one that is shown is another's";
  mac.advance(cardDelay);
  EXPECT_EQ(hover.cardTexts().front(), "Plan");
  plan.retitle("Plan 2");
  mac.settle();
  EXPECT_TRUE(hover.cardShown()) << "its tab is still there";
}

TEST_F(HoverPanelsThatGo, ACardThatWaitsComesThoughAnotherTabIsGone) {
  auto report = open("Report");
  open("Plan");
  open("Notes");
  start();
  strip().hoverTab("Plan");
  report.close();
  mac.settle();
  mac.advance(cardDelay);
  ASSERT_TRUE(hover.cardShown());
  EXPECT_EQ(hover.cardTexts().front(), "Plan");
}

TEST_F(HoverPanelsThatGo, NoCardStaysOrComesOverAnOpenMenu) {
  open("Report");
  open("Plan");
  start();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  bool opened = false;
  mac.menus().next([&](SimOpenMenu&) {
    opened = true;
    EXPECT_FALSE(hover.cardShown());
    strip().hoverTab("Plan");
    mac.advance(cardDelay);
    EXPECT_FALSE(hover.cardShown());
    restOnZoom();
    EXPECT_FALSE(hover.pickerShown());
  });
  strip().rightClickTab("Report");
  ASSERT_TRUE(opened);
  restOnTab("Plan");
  EXPECT_TRUE(hover.cardShown()) << "the menu is closed";
}

TEST_F(HoverPanelsThatGo, NoCardComesOverTheMenuOfATool) {
  open("Report");
  start();
  strip().hoverTab("Report");
  bool opened = false;
  mac.menus().next([&](SimOpenMenu&) {
    opened = true;
    strip().hoverTab("Report");
    mac.advance(cardDelay);
    EXPECT_FALSE(hover.cardShown());
  });
  strip().clickTool("Groups");
  EXPECT_TRUE(opened);
}

TEST_F(HoverPanelsThatGo, ThePickerOfAWindowThatIsGoneGoesWithIt) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnZoom();
  ASSERT_TRUE(hover.pickerShown());
  plan.close();
  mac.settle();
  ASSERT_TRUE(stripShown());
  EXPECT_FALSE(hover.pickerShown());
}

TEST_F(HoverPanelsThatGo, ThePickerGoesWhenAnotherApplicationComes) {
  open("Report");
  auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  auto picture = viewer.open("Picture", {100, 200, 1200, 600});
  start();
  restOnZoom();
  mac.activate(viewer);
  mac.settle();
  EXPECT_FALSE(hover.pickerShown());
  EXPECT_EQ(picture.frame(), (AxRect{100, 200, 1200, 600}));
}

TEST_F(HoverPanelsThatGo, ThePointerThatGoesIntoTheOpenSearchFieldEndsTheCard) {
  open("Report");
  start();
  strip().clickSearchField();
  restOnTab("Report");
  ASSERT_TRUE(hover.cardShown());
  const auto field = strip().panel().host().toScreen(strip().searchField()->frame());
  mac.pointer().moveTo({field->midX(), field->midY()});
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
  EXPECT_TRUE(dropdown().isVisible());
}

TEST_F(HoverPanelsThatGo, ATabIsNoLongerLitOnceTheStripWasHiddenUnderThePointer) {
  auto report = open("Report");
  open("Plan");
  start();
  const auto unlit = strip().panel().drawing().items().size();
  strip().hoverTab("Report");
  mac.settle();
  ASSERT_EQ(strip().panel().drawing().items().size(), unlit + 1);
  auto plan = *mac.frontWindow();
  plan.enterFullScreen();
  mac.settle();
  ASSERT_FALSE(stripShown());
  plan.leaveFullScreen();
  mac.settle();
  ASSERT_TRUE(stripShown());
  EXPECT_EQ(strip().panel().drawing().items().size(), unlit);
}

TEST_F(HoverPanelsThatGo, AWindowThatClosesUnderItsCardTakesTheCardAlong) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnTab("Report");
  report.close();
  mac.settle();
  EXPECT_FALSE(hover.cardShown());
  EXPECT_TRUE(plan.exists());
}

TEST_F(HoverPanelsThatGo, APressOnACardWhoseWindowIsGoneBeforeItIsReportedHasNoEffect) {
  auto report = open("Report");
  auto plan = open("Plan");
  start();
  restOnTab("Report");
  const ScreenPoint button = hover.cardButton(tool::closeWindow);
  report.close();
  mac.pointer().click(button);
  EXPECT_TRUE(plan.exists());
  EXPECT_FALSE(hover.cardShown());
}

class HoverInWord : public WordStory {
 protected:
  PanelReader hover{mac};
};

TEST_F(HoverInWord, NoCardStaysOrComesOverAQuestion) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  strip().hoverTab("Plan");
  mac.advance(cardDelay);
  ASSERT_TRUE(hover.cardShown());
  bool asked = false;
  mac.alerts().next([&](const TextAlert&) {
    asked = true;
    EXPECT_FALSE(hover.cardShown());
    strip().hoverTab("Plan");
    mac.advance(cardDelay);
    EXPECT_FALSE(hover.cardShown());
    return TextAlertAnswer{};
  });
  strip().clickTool("Rename");
  EXPECT_TRUE(asked);
}

}  // namespace
}  // namespace pellar
