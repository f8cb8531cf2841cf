#include <gtest/gtest.h>

#include <chrono>

#include "app/tracking/PlaceInFront.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Who is in front after a window or a question of this program.
class PlaceInFrontTest : public testing::Test {
 protected:
  [[nodiscard]] bool isOurs() {
    mac.settle();
    return mac.workspace().frontmostApplication()->bundleId == mac.workspace().ownBundleId();
  }
  [[nodiscard]] bool isInFront(const SimApplication& application) {
    mac.settle();
    return mac.workspace().frontmostApplication()->pid == application.pid();
  }
  void take() {
    place->take();
    mac.settle();
  }
  // The user brings this program to the front, as with a click into its window.
  void userGoesToUs() {
    mac.activatePellar();
    mac.settle();
  }
  void userGoesTo(const SimApplication& application) {
    mac.activate(application);
    mac.settle();
  }

  SimMac mac;
  SimApplication viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer"});
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::shared_ptr<PlaceInFront> place = PlaceInFront::create(mac.workspace());  // depends-on: mac
};

TEST_F(PlaceInFrontTest, AUserWhoComesByHimselfStays) {
  userGoesTo(viewer);
  userGoesToUs();
  EXPECT_TRUE(isOurs());
}

TEST_F(PlaceInFrontTest, GivenBackOnceItIsNotGivenBackAgain) {
  place->during([&] { place->giveBack(); });  // a window closes under a question
  EXPECT_TRUE(isInFront(editor));
  userGoesToUs();
  EXPECT_TRUE(isOurs());
}

TEST_F(PlaceInFrontTest, AWindowClosedBehindAnotherApplicationOwesNothing) {
  take();
  userGoesTo(viewer);
  place->giveBack();
  EXPECT_TRUE(isInFront(viewer));
  userGoesToUs();
  EXPECT_TRUE(isOurs());
}

TEST_F(PlaceInFrontTest, AWindowOpenedAgainBeforeTheSystemFollowedKeepsIt) {
  mac.workspace().activationTime = 100ms;
  place->take();
  place->giveBack();
  place->take();
  mac.advance(1s);
  EXPECT_TRUE(isOurs());
}

TEST_F(PlaceInFrontTest, AWindowThatClosesUnderItsQuestionLeavesItToTheApplicationBefore) {
  take();
  place->during([&] {
    place->giveBack();
    EXPECT_TRUE(isOurs()) << "the question is open";
  });
  EXPECT_TRUE(isInFront(editor));
}

TEST_F(PlaceInFrontTest, ASecondQuestionThatIsNotAskedChangesNothing) {
  take();
  place->during([&] {
    place->giveBack();
    place->during([] {});
    EXPECT_TRUE(isOurs());
  });
  EXPECT_TRUE(isInFront(editor));

  take();
  place->during([&] {
    mac.settle();
    userGoesTo(viewer);
    place->during([] {});
    EXPECT_TRUE(isInFront(viewer));
    userGoesToUs();
  });
  EXPECT_TRUE(isOurs()) << "the window under the first one is open still";
}

}  // namespace
}  // namespace pellar
