// What other applications are asked for, and in which order, where the order is part of what is promised.

#include <algorithm>
#include <functional>
#include <optional>

#include "tests/support/MenuStory.h"
#include "tests/support/RecordedPlatform.h"

namespace pellar {
namespace {

class ActionOrder : public MenuStory {
 protected:
  using Calls = std::vector<std::string>;

  // Starts on the platform that notes its calls, and forgets those of the start.
  void startRecorded() {
    listened.emplace(recorded.platform());
    acceptTerms(*listened);
    listened->applicationDidFinishLaunching();
    mac.settle();
  }
  void TearDown() override {
    listened.reset();
    MenuStory::TearDown();
  }
  // What was asked of other applications since then.
  [[nodiscard]] Calls askedDuring(const std::function<void()>& gesture) {
    mac.settle();
    recorded.forget();
    gesture();
    mac.settle();
    Calls calls = recorded.calls();
    std::erase_if(calls, [](const auto& call) { return call.starts_with("after "); });
    return calls;
  }
  [[nodiscard]] std::string activation() const { return "activate " + std::to_string(editor.pid()); }

  RecordedPlatform recorded{mac};
  std::optional<AppDelegate> listened;
};

TEST_F(ActionOrder, AMinimisedWindowComesBackIsRaisedAndThenItsApplicationIsActivated) {
  auto plan = open("Plan");
  open("Report");
  plan.minimise();
  startRecorded();
  EXPECT_EQ(askedDuring([&] { strip().clickTab("Plan"); }),
            (Calls{"write AXMinimized: Plan", "AXRaise: Plan", activation()}));
  EXPECT_EQ(askedDuring([&] { listened->strip()->cycle(true); }), (Calls{"AXRaise: Report", activation()}));
}

TEST_F(ActionOrder, ATabReleasedDuringASearchEndsTheSearchAndThenRaisesItsWindow) {
  open("Plan");
  open("Report");
  startRecorded();
  mac.pointer().press(strip().tabPoint("Plan"));
  listened->strip()->openRecent();
  ASSERT_TRUE(dropdown().isVisible());
  EXPECT_EQ(askedDuring([&] { mac.pointer().release(); }),
            (Calls{activation(), "AXRaise: Plan", activation()}));
  EXPECT_FALSE(dropdown().isVisible());
}

TEST_F(ActionOrder, ATiledWindowIsPlacedAndThenRaised) {
  open("Plan");
  open("Report");
  startRecorded();
  EXPECT_EQ(askedDuring([&] {
              choose("Plan", {"Layout", "Tile left half"});
            }),
            (Calls{"write AXPosition: Plan", "write AXSize: Plan", "write AXPosition: Plan", "AXRaise: Plan",
                   activation()}));
}

TEST_F(ActionOrder, AWindowThatMakesRoomIsPlacedOnceAndOneThatRefusesIsAskedTwice) {
  auto plan = open("Plan");
  keepSilent(editor);
  startRecorded();
  const auto reportAtTheTop = [&] {
    plan.moveTo({100, 30});
    listened->tracker().refresh();
  };
  const Calls placed{"write AXPosition: Plan", "write AXSize: Plan", "write AXPosition: Plan"};
  EXPECT_EQ(askedDuring(reportAtTheTop), placed);
  EXPECT_EQ(plan.frame().y, 57);
  plan.quirks().refusesMoves = true;
  plan.quirks().refusesSizes = true;
  Calls twice = placed;
  twice.insert(twice.end(), placed.begin(), placed.end());
  EXPECT_EQ(askedDuring(reportAtTheTop), twice);
}

TEST_F(ActionOrder, AZoomedWindowIsPlacedAndNotRaised) {
  open("Plan");
  startRecorded();
  const Calls placed{"write AXPosition: Plan", "write AXSize: Plan", "write AXPosition: Plan"};
  EXPECT_EQ(askedDuring([&] { strip().clickTool(tool::zoom); }), placed);
  EXPECT_EQ(askedDuring([&] { strip().clickTool(tool::zoom); }), placed);
}

TEST_F(ActionOrder, WindowsAreClosedInTheOrderOfTheirTabs) {
  const auto openThree = [&] {
    for (const auto* title : {"A", "B", "C"}) open(title).quirks().asksBeforeClosing = true;
  };
  openThree();
  startRecorded();
  strip().dragTab("C").to(0);
  const Calls all{"AXPress: close button of C", "AXPress: close button of A", "AXPress: close button of B"};
  EXPECT_EQ(askedDuring([&] { strip().clickTool("Close all"); }), all);
  EXPECT_EQ(askedDuring([&] { choose("B", {"Close all"}); }), all);
  EXPECT_EQ(askedDuring([&] { choose("A", {"Close others"}); }), (Calls{all[0], all[2]}));
  EXPECT_EQ(askedDuring([&] { choose("A", {"Close"}); }), Calls{all[1]});
}

TEST_F(ActionOrder, SaveAllMakesEachWindowTheMainOneAndTheFocusedOneInTheEnd) {
  editor.setMenuBar({{"Apple", {}}, {"File", {{"Save", [] {}}}}});
  for (const auto* title : {"A.txt", "B.txt"})
    open(title).setDocument("file:///Users/ann/" + std::string(title));
  startRecorded();
  EXPECT_EQ(askedDuring([&] { strip().clickTool("Save all"); }),
            (Calls{"write AXMain true: A.txt", "AXPress: Save", "write AXMain true: B.txt", "AXPress: Save",
                   "write AXMain true: B.txt"}));
}

TEST_F(ActionOrder, AnApplicationIsListenedToForTheSameTenThingsAndEachWindowForThree) {
  open("Plan");
  startRecorded();
  EXPECT_EQ(recorded.registrations(),
            (Calls{"AXFocusedWindowChanged on the application", "AXWindowCreated on the application",
                   "AXUIElementDestroyed on the application", "AXWindowMoved on the application",
                   "AXWindowResized on the application", "AXWindowMiniaturized on the application",
                   "AXWindowDeminiaturized on the application", "AXTitleChanged on the application",
                   "AXApplicationHidden on the application", "AXApplicationShown on the application",
                   "AXUIElementDestroyed on Plan", "AXWindowMiniaturized on Plan",
                   "AXWindowDeminiaturized on Plan"}));
}

TEST_F(ActionOrder, OfAWindowItsTitleIsReadBeforeItsPlaceAndItsFlags) {
  open("Plan");
  startRecorded();
  recorded.forget();
  listened->tracker().refresh();
  EXPECT_EQ(recorded.reads(),
            (Calls{"AXWindows of the application", "AXSubrole of Plan", "AXTitle of Plan",
                   "AXPosition of Plan", "AXSize of Plan", "AXMinimized of Plan", "AXFullScreen of Plan",
                   "AXDocument of Plan", "AXFocusedWindow of the application"}));
}

TEST_F(ActionOrder, AWindowOfWordIsNotAskedForItsDocument) {
  auto word = launchWord();
  word.open("Document1", {100, 200, 1200, 600}).setDocument("file:///Users/ann/Plan.docx");
  startRecorded();
  EXPECT_EQ(std::ranges::count(recorded.reads(), "AXDocument of Document1"), 0);
  EXPECT_EQ(strip().tabs(), Labels{"Document1"});
}

// The menu's items may outlive the program by the rest of a turn.
TEST_F(ActionOrder, AnItemChosenAfterTheProgramEndedClosesNothing) {
  const auto plan = open("Plan");
  open("Report");
  startRecorded();
  std::vector<std::function<void()>> items;
  mac.menus().next([&](SimOpenMenu& menu) {
    for (const auto* title : {"Close", "Close others", "Close all"})
      items.push_back(menu.item({title}).handler);
    items.push_back(menu.item({"Colour tag", "Red"}).handler);
    items.push_back(menu.item({"Layout", "Tile left half"}).handler);
  });
  strip().rightClickTab("Plan");
  ASSERT_EQ(items.size(), 5U);
  listened.reset();
  recorded.forget();
  for (const auto& item : items) item();
  mac.settle();
  EXPECT_EQ(recorded.calls(), Calls{});
  EXPECT_TRUE(plan.exists());
  EXPECT_TRUE(saved().tags.empty());
}

class QuietMenu : public MenuStory {
 protected:
  QuietMenu() { keepSilent(editor); }
};

TEST_F(QuietMenu, ItsWindowsAreLookedAtAgainAfterEachWayOfClosing) {
  for (const auto* title : {"A", "B", "C", "D"}) open(title);
  start();
  choose("B", {"Close"});
  EXPECT_EQ(strip().tabs(), (Labels{"A", "C", "D"}));
  strip().middleClickTab("C");
  EXPECT_EQ(strip().tabs(), (Labels{"A", "D"}));
  choose("A", {"Close others"});
  EXPECT_EQ(strip().tabs(), Labels{"A"});
  choose("A", {"Close all"});
  EXPECT_FALSE(stripShown());
}

TEST_F(QuietMenu, ItsWindowIsLookedAtAgainAfterItWasTiled) {
  const auto plan = open("Plan");
  open("Report");
  start();
  choose("Plan", {"Layout", "Tile left half"});
  EXPECT_EQ(strip().activeTab(), "Plan");
  expectStripOver(plan);
}

}  // namespace
}  // namespace pellar
