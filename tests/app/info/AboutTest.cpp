#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class About : public ShellStory {
 protected:
  static constexpr const char* button = "Check for updates";
  void show() { mac.statusBar().choose({"About Pellar"}); }
  [[nodiscard]] std::string status() { return window(aboutTitle).text("status"); }
};

TEST_F(About, ReadsToTheLetter) {
  start();
  show();
  EXPECT_EQ(window(aboutTitle).texts(),
            (Rows{"Pellar", "Version 1.4.0 (build 127)", "Tabs for every window on Mac and Windows.", "",
                  "[Check for updates]", "[Website]", "[Terms]"}));
  EXPECT_EQ(mac.windows().key(), &window(aboutTitle));
  const auto& description = window(aboutTitle).description();
  EXPECT_EQ(description.contentSize, (Size{360, 260}));
  EXPECT_TRUE(description.closable);
  EXPECT_EQ(description.level, WindowLevel::normal);
  EXPECT_EQ(description.spacing, 8);
  EXPECT_FALSE(description.columnReachesBottom);
  EXPECT_EQ(description.alignment, StackAlignment::centre);
  EXPECT_EQ(description.insets, (WindowInsets{.top = 26, .left = 24, .bottom = 24, .right = 24}));
  const auto& name = std::get<WindowLabel>(description.elements[0]);
  EXPECT_EQ(name.fontSize, 26);
  EXPECT_EQ(name.weight, LabelWeight::semibold);
  const auto& line = std::get<WindowLabel>(description.elements[2]);
  EXPECT_TRUE(line.centred);
  EXPECT_EQ(line.wrapWidth, 300);
  EXPECT_EQ(line.maximumLines, 2);
  EXPECT_EQ(std::get<WindowSpacer>(description.elements[3]).height, 10);
  EXPECT_EQ(std::get<WindowLabel>(description.elements[4]).fontSize, 11);
  EXPECT_EQ(std::get<WindowSpacer>(description.elements[5]).height, 6);
  EXPECT_EQ(name.color, TextColor::label);
  for (const std::size_t secondary : {1U, 2U, 4U})
    EXPECT_EQ(std::get<WindowLabel>(description.elements[secondary]).color, TextColor::secondaryLabel);
  const auto& row = std::get<WindowButtonRow>(description.elements[6]);
  EXPECT_EQ(row.spacing, 8);
  for (const auto& each : row.buttons) {
    EXPECT_EQ(each.bezel, ButtonBezel::rounded);
    EXPECT_FALSE(each.isDefault);
  }
}

TEST_F(About, ABundleWithoutVersionsShowsZeros) {
  mac.platform().bundle.shortVersion.reset();
  mac.platform().bundle.version.reset();
  start();
  show();
  EXPECT_EQ(window(aboutTitle).texts()[1], "Version 0 (build 0)");
}

TEST_F(About, LinksLeadToTheSiteAndItsTerms) {
  start();
  show();
  window(aboutTitle).press("Website");
  window(aboutTitle).press("Terms");
  EXPECT_EQ(mac.workspace().openedUrls(), (Rows{"https://pellar.example", "https://pellar.example/terms"}));
}

TEST_F(About, ACheckSaysCheckingAndTwoSecondsLaterWhatIsKnown) {
  start();
  show();
  mac.web().answer(R"({"latest":"1.4.0"})");
  window(aboutTitle).press(button);
  EXPECT_EQ(status(), "Checking…");
  mac.advance(1999ms);
  EXPECT_EQ(status(), "Checking…");
  mac.advance(1ms);
  EXPECT_EQ(status(), "You are on the latest version.");
}

TEST_F(About, AnUpdateIsSaidAtOnceAndThenWhereToGetIt) {
  start();
  show();
  mac.web().answer(R"({"latest":"1.5.0"})");
  window(aboutTitle).press(button);
  mac.advance(1s);
  EXPECT_EQ(status(), "Update to 1.5.0 is ready.");
  mac.advance(1s);
  EXPECT_EQ(status(), "Update to 1.5.0 is ready. Use the menu to download.");
  EXPECT_EQ(mac.notifications().requests(), 0);
}

TEST_F(About, AnUpdateFoundBeforeIsSaidWhenItOpens) {
  start();
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(9s);
  show();
  EXPECT_EQ(status(), "Update to 1.5.0 is ready.");
}

TEST_F(About, AnUpdateFoundAfterItWasClosedIsSaidWhenItOpensAgain) {
  start();
  show();
  window(aboutTitle).clickClose();
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(9s);
  show();
  EXPECT_EQ(status(), "Update to 1.5.0 is ready.");
}

TEST_F(About, AnUpdateFoundWhileItIsOpenIsSaid) {
  start();
  show();
  EXPECT_EQ(status(), "");
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(9s);
  EXPECT_EQ(status(), "Update to 1.5.0 is ready.");
}

TEST_F(About, AFailedCheckStillComesToAnEnd) {
  start();
  show();
  window(aboutTitle).press(button);
  mac.advance(2s);
  EXPECT_EQ(status(), "You are on the latest version.");
}

TEST_F(About, ASlowAnswerIsShownOnceItComes) {
  start();
  show();
  mac.web().answer(R"({"latest":"1.5.0"})", 5s);
  window(aboutTitle).press(button);
  mac.advance(2s);
  EXPECT_EQ(status(), "You are on the latest version.");
  mac.advance(4s);
  EXPECT_EQ(status(), "Update to 1.5.0 is ready.");
}

TEST_F(About, PressingTwiceEndsTwice) {
  start();
  show();
  window(aboutTitle).press(button);
  mac.advance(1s);
  window(aboutTitle).press(button);
  EXPECT_EQ(status(), "Checking…");
  mac.advance(1s);
  EXPECT_EQ(status(), "You are on the latest version.");
  mac.web().answer(R"({"latest":"1.5.0"})");
  mac.advance(1s);
  EXPECT_EQ(status(), "You are on the latest version.");
}

TEST_F(About, TheStripStaysAsItWasMeanwhile) {
  editor.open("Plan");
  start();
  ASSERT_TRUE(stripShown());
  show();
  EXPECT_TRUE(stripShown());
  EXPECT_EQ(mac.strip().tabs(), Rows{"Plan"});
}

TEST_F(About, EndingDuringACheckIsNoHarm) {
  start();
  show();
  window(aboutTitle).press(button);
  pellar.reset();
  mac.advance(10s);
  EXPECT_FALSE(mac.windows().exists(aboutTitle));
}

}  // namespace
}  // namespace pellar
