#include <gtest/gtest.h>

#include "app/strip/card/TabCard.h"
#include "tests/support/PanelReader.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

// A tab in the middle of the screen, and the pointer where no panel is.
class Card : public testing::Test {
 protected:
  static constexpr ScreenRect tab{300, 600, 160, 26};
  // "Report.docx", eleven letters of 7.15, beside its margins and three buttons: to the fraction of a point.
  static constexpr double reportWidth = 11 * 7.15 + 2 * 12 + 3 * 30;

  void rest(const ScreenRect& under = tab) { card.show(1, "Report.docx", "~/Documents", under); }
  void showCard(const ScreenRect& under = tab) {
    rest(under);
    mac.advance(cardDelay);
    ASSERT_TRUE(hover.cardShown());
  }
  [[nodiscard]] ScreenRect frame() const { return hover.card()->frame(); }
  void enterCard() { hover.card()->simHost().view()->mouseEntered(); }
  void leaveCard() { hover.card()->simHost().view()->mouseExited(); }

  SimMac mac;
  PanelReader hover{mac};
  std::vector<std::pair<WindowId, StripAction>> acted;
  TabCard card{mac.platform().panels, mac.platform().mainLoop, mac.platform().screens,
               [this](WindowId id, StripAction action) { acted.emplace_back(id, action); }};
};

TEST_F(Card, IsAFloatingPanelThatNeverTakesTheKeyboard) {
  const PanelStyle expected{.contentSize = {200, 58}, .level = PanelLevel::popUpMenu};
  EXPECT_EQ(hover.card()->style(), expected);
}

TEST_F(Card, ComesThreeTenthsOfASecondAfterThePointer) {
  rest();
  mac.advance(cardDelay - 1ms);
  EXPECT_FALSE(hover.cardShown());
  mac.advance(1ms);
  EXPECT_TRUE(hover.cardShown());
  EXPECT_EQ(hover.cardTexts(),
            (Texts{"Report.docx", "~/Documents", tool::minimize, tool::zoom, tool::closeWindow}));
}

TEST_F(Card, StandsFourPointsUnderTheTabAtItsLeftEdge) {
  showCard();
  EXPECT_EQ(frame(), (ScreenRect{300, 600 - 4 - 58, reportWidth, 58}));
}

TEST_F(Card, WithALongNameIs260WideAnd74High) {
  card.show(1, "Minutes of the yearly meeting of all members.docx", std::nullopt, tab);
  mac.advance(cardDelay);
  EXPECT_EQ(frame(), (ScreenRect{300, 600 - 4 - 74, 260, 74}));
}

TEST_F(Card, AtTheRightEdgeEndsEightPointsInsideTheScreen) {
  showCard({1400, 600, 160, 26});
  EXPECT_EQ(frame().maxX(), 1440 - 8);
}

TEST_F(Card, AtTheLeftEdgeBeginsEightPointsInsideTheScreen) {
  showCard({-100, 600, 160, 26});
  EXPECT_EQ(frame().minX(), 8);
}

TEST_F(Card, NeverComesCloserThanEightPointsToTheMenuBar) {
  showCard({300, 890, 160, 26});
  EXPECT_EQ(frame().maxY(), 900 - 25 - 8);
}

TEST_F(Card, StaysOnTheTabsScreenAlsoAtNegativeCoordinates) {
  mac.screens().add({-1920, -300, 1920, 1080}, 0, 40);
  showCard({-100, -200, 160, 26});
  EXPECT_EQ(frame(), (ScreenRect{0.0 - reportWidth - 8, -200 - 4 - 58, reportWidth, 58}));
  showCard({-2000, 760, 160, 26});
  EXPECT_EQ(frame().minX(), -1920 + 8);
  EXPECT_EQ(frame().maxY(), 756);
}

TEST_F(Card, DoesNotComeWithoutAnyScreen) {
  mac.screens().set({});
  rest();
  mac.advance(10s);
  EXPECT_FALSE(hover.cardShown());
  card.scheduleClose();
  mac.advance(10s);
}

TEST_F(Card, OfTheLastTabOnlyIsShownWhenThePointerMovesQuickly) {
  for (const char* title : {"A", "B", "C"}) {
    card.show(title[0], title, std::nullopt, tab);
    mac.advance(cardDelay - 1ms);
    EXPECT_FALSE(hover.cardShown());
  }
  mac.advance(1ms);
  EXPECT_EQ(hover.cardTexts().front(), "C");
}

TEST_F(Card, DoesNotComeWhenThePointerIsGoneBefore) {
  rest();
  mac.advance(cardDelay - 1ms);
  card.scheduleClose();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
  mac.advance(10s);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Card, OfATabThatThePointerLeftAgainDoesNotReplaceTheOneThatIsShown) {
  showCard();
  card.show(2, "Plan.docx", std::nullopt, {500, 600, 160, 26});
  card.scheduleClose();
  mac.advance(cardDelay);
  ASSERT_TRUE(hover.cardShown());
  EXPECT_EQ(hover.cardTexts().front(), "Report.docx");
}

TEST_F(Card, GoesAMomentAfterThePointer) {
  showCard();
  card.scheduleClose();
  mac.advance(closeDelay - 1ms);
  EXPECT_TRUE(hover.cardShown());
  mac.advance(1ms);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Card, StaysWhenThePointerReachesItInTime) {
  showCard();
  card.scheduleClose();
  mac.advance(closeDelay - 1ms);
  enterCard();
  mac.advance(10s);
  EXPECT_TRUE(hover.cardShown());
  leaveCard();
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Card, StaysWhenItIsEnteredBeforeTheStripReportsTheExit) {
  showCard();
  enterCard();
  card.scheduleClose();
  mac.advance(10s);
  EXPECT_TRUE(hover.cardShown());
}

TEST_F(Card, OfTheNextTabComesAlsoWhenThePreviousOneReportsTheExitLate) {
  showCard();
  card.scheduleClose();
  enterCard();
  card.show(2, "Plan.docx", std::nullopt, tab);
  leaveCard();
  mac.advance(10s);
  EXPECT_EQ(hover.cardTexts().front(), "Plan.docx");
}

TEST_F(Card, KeepsItsTabWhileAnotherOneWaits) {
  showCard();
  card.show(2, "Plan.docx", std::nullopt, {500, 600, 160, 26});
  mac.advance(cardDelay - 1ms);
  EXPECT_EQ(hover.cardTexts().front(), "Report.docx");
  mac.pointer().click(hover.cardButton(tool::minimize));
  EXPECT_EQ(acted, (std::vector<std::pair<WindowId, StripAction>>{{1, StripAction::minimize}}));
}

TEST_F(Card, BecomesTheNextTabsInPlace) {
  showCard();
  card.show(2, "Plan.docx", std::nullopt, {500, 600, 160, 26});
  mac.advance(cardDelay);
  EXPECT_EQ(hover.cardTexts().front(), "Plan.docx");
  EXPECT_EQ(frame().minX(), 500);
  EXPECT_FALSE(hover.card()->drawing().isTorn());
}

TEST_F(Card, GoesAtOnceWhenAButtonIsPressed) {
  showCard();
  mac.pointer().click(hover.cardButton(tool::closeWindow));
  EXPECT_FALSE(hover.cardShown());
  EXPECT_EQ(acted, (std::vector<std::pair<WindowId, StripAction>>{{1, StripAction::closeWindow}}));
  // It closed under the pointer, and comes again as before: the pointer has not moved.
  showCard();
  EXPECT_EQ(hover.card()->drawing().items().size(), 5U) << "no button is highlighted any more";
  card.scheduleClose();
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Card, StaysWhenItIsClickedElsewhere) {
  showCard();
  mac.pointer().click({frame().minX() + 20, frame().midY()});
  EXPECT_TRUE(hover.cardShown());
  EXPECT_TRUE(acted.empty());
}

TEST_F(Card, IsHiddenAtOnceAlsoWhileItWaits) {
  showCard();
  card.show(2, "Plan.docx", std::nullopt, tab);
  card.hide();
  EXPECT_FALSE(hover.cardShown());
  mac.advance(10s);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Card, ThatIsHiddenWaitsForNothing) {
  showCard();
  card.scheduleClose();
  card.hide();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
  card.scheduleClose();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
}

TEST_F(Card, LeavesNothingBehindInTheMainLoop) {
  auto doomed = std::make_unique<TabCard>(mac.platform().panels, mac.platform().mainLoop,
                                          mac.platform().screens, [](WindowId, StripAction) {});
  doomed->show(1, "A", std::nullopt, tab);
  doomed.reset();
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
  mac.advance(10s);
}

TEST_F(Card, CostsNothingWhileThePointerRests) {
  showCard();
  const auto turns = mac.mainLoop().turns();
  mac.advance(600s);
  EXPECT_EQ(mac.mainLoop().turns(), turns);
  EXPECT_EQ(mac.mainLoop().activeTimers(), 0U);
}

}  // namespace
}  // namespace pellar
