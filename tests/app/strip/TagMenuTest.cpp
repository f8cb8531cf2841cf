#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

using TagMenu = MenuStory;
using WordTags = WordStory;

TEST_F(TagMenu, ListsTheColoursWithTheirSwatches) {
  open("Plan");
  start();
  std::vector<std::optional<Color>> swatches;
  mac.menus().next([&](SimOpenMenu& menu) {
    EXPECT_EQ(menu.rows({"Colour tag"}),
              (Rows{"Red", "Orange", "Yellow", "Green", "Blue", "Purple", "---", "None"}));
    for (const auto* title : {"Red", "Orange", "Yellow", "Green", "Blue", "Purple", "None"})
      swatches.push_back(menu.item({"Colour tag", title}).swatch);
  });
  strip().rightClickTab("Plan");
  EXPECT_EQ(swatches, (std::vector<std::optional<Color>>{
                          Color::of(SystemColor::red), Color::of(SystemColor::orange),
                          Color::of(SystemColor::yellow), Color::of(SystemColor::green),
                          Color::of(SystemColor::blue), Color::of(SystemColor::purple), std::nullopt}));
}

TEST_F(TagMenu, AChosenColourIsOnTheTabAtOnceAndChecked) {
  open("Plan");
  open("Report");
  start();
  choose("Plan", {"Colour tag", "Red"});
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
  EXPECT_EQ(strip().tagOf("Report"), std::nullopt);
  EXPECT_EQ(tabMenu("Plan", "Colour tag"),
            (Rows{"✓ Red", "Orange", "Yellow", "Green", "Blue", "Purple", "---", "None"}));
  EXPECT_EQ(tabMenu("Report", "Colour tag"),
            (Rows{"Red", "Orange", "Yellow", "Green", "Blue", "Purple", "---", "None"}));
}

TEST_F(TagMenu, TheTabHasItsColourBeforeAnythingElseIsSeen) {
  open("Plan");
  start();
  std::optional<Color> seen;
  mac.menus().next([&](SimOpenMenu& menu) {
    mac.mainLoop().postInDefaultMode([&] { seen = strip().tagOf("Plan"); });
    menu.choose({"Colour tag", "Red"});
  });
  strip().rightClickTab("Plan");
  EXPECT_EQ(seen, Color::of(SystemColor::red));
}

TEST_F(TagMenu, AColourThatCannotBeSavedIsSaidOnce) {
  open("Plan");
  start();
  const auto folder = mac.platform().folders.applicationSupport / "Pellar";
  std::filesystem::remove_all(folder);
  std::ofstream(folder) << "in the way";
  choose("Plan", {"Colour tag", "Red"});
  EXPECT_EQ(log.countStarting("state save failed: "), 1);
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
}

TEST_F(TagMenu, AColourChosenTwiceStays) {
  open("Plan");
  start();
  choose("Plan", {"Colour tag", "Red"});
  choose("Plan", {"Colour tag", "Red"});
  EXPECT_EQ(saved().tags, (Tags{{"title:Plan", "red"}}));
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
}

TEST_F(TagMenu, EachColourIsSavedUnderItsName) {
  open("Plan");
  start();
  const std::vector<std::pair<std::string, SystemColor>> colours{
      {"Red", SystemColor::red},     {"Orange", SystemColor::orange}, {"Yellow", SystemColor::yellow},
      {"Green", SystemColor::green}, {"Blue", SystemColor::blue},     {"Purple", SystemColor::purple}};
  for (const auto& [title, colour] : colours) {
    choose("Plan", {"Colour tag", title});
    EXPECT_EQ(strip().tagOf("Plan"), Color::of(colour));
    std::string name = title;
    name.front() = static_cast<char>(name.front() - 'A' + 'a');
    EXPECT_EQ(saved().tags, (Tags{{"title:Plan", name}}));
  }
}

TEST_F(TagMenu, NoneTakesTheColourAway) {
  open("Plan");
  start();
  choose("Plan", {"Colour tag", "Green"});
  choose("Plan", {"Colour tag", "None"});
  EXPECT_EQ(strip().tagOf("Plan"), std::nullopt);
  EXPECT_TRUE(saved().tags.empty());
}

TEST_F(TagMenu, AColourIsFoundHoweverTheProgramSpellsTheTitle) {
  open("R\u00E9sum\u00E9");
  pellar.store().update([](AppState& state) { state.tags = {{"title:Re\u0301sume\u0301", "red"}}; });
  start();
  EXPECT_EQ(strip().tagOf("R\u00E9sum\u00E9"), Color::of(SystemColor::red));
  choose("R\u00E9sum\u00E9", {"Colour tag", "None"});
  EXPECT_TRUE(saved().tags.empty());
}

TEST_F(TagMenu, NoneOnAnUntaggedTabSavesAndLeavesTheOtherTags) {
  open("Plan");
  pellar.store().update([](AppState& state) { state.tags = {{"title:Report", "blue"}}; });
  start();
  std::filesystem::remove(pellar.store().url());
  choose("Plan", {"Colour tag", "None"});
  EXPECT_EQ(saved().tags, (Tags{{"title:Report", "blue"}}));
}

TEST_F(TagMenu, AnUnknownColourInTheFileIsNeitherShownNorChecked) {
  pellar.store().update([](AppState& state) { state.tags = {{"title:Plan", "pink"}}; });
  open("Plan");
  start();
  EXPECT_EQ(strip().tagOf("Plan"), std::nullopt);
  EXPECT_EQ(tabMenu("Plan", "Colour tag").front(), "Red");
  choose("Plan", {"Colour tag", "Blue"});
  EXPECT_EQ(saved().tags, (Tags{{"title:Plan", "blue"}}));
}

TEST_F(WordTags, AColourBelongsToTheFileAndNotToItsTitle) {
  const auto plan = openInWord("Plan.docx");
  start();
  choose("Plan", {"Colour tag", "Purple"});
  EXPECT_EQ(saved().tags, (Tags{{pathOf("Plan.docx"), "purple"}}));
  plan->window->retitle("Plan.docx - Saved to my Mac");
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::purple));
}

TEST_F(WordTags, AColourStaysOnItsTabWhenWordDoesNotTellItsNamesLater) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  choose("Plan", {"Colour tag", "Red"});
  mac.advance(31s);
  mac.office().allowsControl = false;
  lookAtTheEditor();
  EXPECT_EQ(strip().tagOf("Plan"), Color::of(SystemColor::red));
}

TEST_F(TagMenu, ATitleThatChangesWhileTheMenuIsOpenDoesNotChangeWhatIsTagged) {
  auto plan = open("Plan");
  start();
  chooseAfter("Plan", [&] { plan.retitle("Report"); }, {"Colour tag", "Red"});
  EXPECT_EQ(saved().tags, (Tags{{"title:Plan", "red"}}));
}

// The whole program quits and is started again.
TEST(Restart, KeepsTagsGroupsAndSettings) {
  SimMac mac;
  auto editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  editor.open("Plan", {100, 200, 1300, 600}).setDocument("file:///Users/ann/Plan.txt");
  std::optional<AppDelegate> pellar(std::in_place, mac.platform());
  acceptTerms(*pellar);
  pellar->applicationDidFinishLaunching();
  mac.settle();
  mac.menus().nextChoose({"Colour tag", "Yellow"});
  mac.strip().rightClickTab("Plan.txt");
  mac.menus().nextChoose({"Save open tabs as group…"});
  mac.alerts().nextType("Monday");
  mac.strip().clickTool("Groups");
  mac.strip().clickTool(tool::autoSaveOff);
  const AppState before = pellar->store().state();

  pellar.reset();
  mac.advance(std::chrono::hours(1));
  pellar.emplace(mac.platform());
  EXPECT_EQ(pellar->store().state(), before);
  pellar->applicationDidFinishLaunching();
  mac.settle();
  EXPECT_EQ(mac.strip().tagOf("Plan.txt"), Color::of(SystemColor::yellow));
  EXPECT_EQ(mac.strip().tools().front(), tool::autoSaveOn);
  mac.menus().nextChoose({"Monday", "Open 1 files"});
  mac.strip().clickTool("Groups");
  EXPECT_EQ(mac.workspace().opened(), std::vector<std::string>{"/Users/ann/Plan.txt"});
}

}  // namespace
}  // namespace pellar
