#include <gtest/gtest.h>

#include "app/panels/CloseDelay.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Closing : public testing::Test {
 protected:
  bool closesIn(std::chrono::milliseconds time) {
    loop.advance(time - 1ms);
    const bool early = closed > 0;
    loop.advance(1ms);
    return !early && closed == 1;
  }
  bool staysOpen() {
    loop.advance(10s);
    return closed == 0;
  }

  SimMainLoop loop;
  int closed = 0;
  CloseDelay delay{loop, [this] {
                     ++closed;
                     delay.reset();
                   }};
};

TEST_F(Closing, HappensAMomentAfterTheAnchorIsLeft) {
  delay.anchorEntered();
  EXPECT_TRUE(staysOpen());
  delay.anchorLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, DoesNotHappenWhenThePanelIsReachedInTime) {
  delay.anchorEntered();
  delay.anchorLeft();
  loop.advance(349ms);
  delay.panelEntered();
  EXPECT_TRUE(staysOpen());
  delay.panelLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, DoesNotHappenWhenThePanelIsEnteredBeforeTheAnchorReportsTheExit) {
  delay.anchorEntered();
  delay.panelEntered();
  delay.anchorLeft();
  EXPECT_TRUE(staysOpen());
}

TEST_F(Closing, HappensAfterThePanelAlsoWhenTheAnchorNeverReportedTheExit) {
  delay.anchorEntered();
  delay.panelEntered();
  EXPECT_TRUE(staysOpen());
  delay.panelLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, DoesNotHappenWhenTheAnchorIsEnteredBeforeThePanelReportsTheExit) {
  delay.panelEntered();
  delay.anchorEntered();
  delay.panelLeft();
  EXPECT_TRUE(staysOpen());
}

TEST_F(Closing, DoesNotHappenWhenThePointerComesBackToTheAnchorInTime) {
  delay.anchorEntered();
  delay.anchorLeft();
  loop.advance(349ms);
  delay.anchorEntered();
  EXPECT_TRUE(staysOpen());
  delay.anchorLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, HappensWhenThePointerWentOverTheAnchorAndThePanelReportsTheExitLast) {
  delay.panelEntered();
  delay.anchorEntered();
  delay.anchorLeft();
  delay.panelLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, BeginsAnewWithEveryReportThatTheAnchorIsLeft) {
  delay.anchorEntered();
  delay.anchorLeft();
  loop.advance(200ms);
  delay.anchorLeft();
  EXPECT_TRUE(closesIn(350ms));
}

TEST_F(Closing, ALateExitFromAClosedPanelMeansNothing) {
  delay.panelEntered();
  delay.reset();
  delay.panelLeft();
  EXPECT_EQ(loop.activeTimers(), 0U);
}

TEST_F(Closing, WaitsForNothingOnceThePanelIsClosed) {
  delay.anchorEntered();
  delay.anchorLeft();
  EXPECT_TRUE(closesIn(350ms));
  EXPECT_EQ(loop.activeTimers(), 0U);
}

}  // namespace
}  // namespace pellar
