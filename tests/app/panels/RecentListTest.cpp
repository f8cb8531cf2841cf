// What the drop-down lists and how it looks.

#include <gtest/gtest.h>

#include "app/panels/RecentView.h"
#include "tests/support/RecentStory.h"

namespace pellar {
namespace {

class RecentList : public RecentStory {};

TEST_F(RecentList, TheNewestFileOfTheApplicationComesFirst) {
  used("Documents/Plan.txt", 100);
  used("Documents/Report.txt", 300);
  used("Notes/Budget.txt", 200);
  openDropdown();
  EXPECT_EQ(titles(), (Names{"Report.txt", "Budget.txt", "Plan.txt"}));
  EXPECT_EQ(folders(), (Names{"~/Documents", "~/Notes", "~/Documents"}));
  EXPECT_EQ(selected(), std::nullopt);
}

TEST_F(RecentList, FilesOfOtherApplicationsAreLeftOut) {
  used("Plan.txt", 100);
  used("Drawing.svg", 200, "org.example.painter");
  openDropdown();
  EXPECT_EQ(titles(), Names{"Plan.txt"});
}

TEST_F(RecentList, FilesThatAreGoneAreLeftOut) {
  used("Plan.txt", 100);
  std::filesystem::remove(used("Gone.txt", 200));
  openDropdown();
  EXPECT_EQ(titles(), Names{"Plan.txt"});
}

// A document of some applications is a folder.
TEST_F(RecentList, AFolderIsListedLikeAFile) {
  std::filesystem::create_directories(mac.home() / "Poster.pages");
  record((mac.home() / "Poster.pages").string(), 100);
  openDropdown();
  EXPECT_EQ(titles(), Names{"Poster.pages"});
}

TEST_F(RecentList, ADocumentSeenOpenIsListedTheNextTime) {
  const auto path = file("Documents/Letter.txt");
  open("Letter.txt").setDocument("file://" + path);
  start();
  strip().clickSearchField();
  EXPECT_EQ(titles(), Names{"Letter.txt"});
}

TEST_F(RecentList, TypingFiltersAsItGoes) {
  used("Documents/Plan.txt", 100);
  used("Documents/Report.txt", 300);
  used("Reports/Budget.txt", 200);
  openDropdown();
  mac.type("rep");
  EXPECT_EQ(titles(), (Names{"Report.txt", "Budget.txt"})) << "a folder's name counts";
  mac.type("orts");
  EXPECT_EQ(titles(), Names{"Budget.txt"});
  mac.type("x");
  EXPECT_EQ(titles(), Names{});
  for (int i = 0; i < 8; ++i) mac.pressKey("deleteBackward:");
  EXPECT_EQ(titles().size(), 3);
}

TEST_F(RecentList, BlanksAroundTheQueryAndItsCaseDoNotMatter) {
  used("Documents/Plan.txt", 100);
  used("Reports/Budget.txt", 200);
  openDropdown();
  mac.type("  REP ");
  EXPECT_EQ(titles(), Names{"Budget.txt"});
}

TEST_F(RecentList, ANameTypedComposedFindsOneStoredDecomposed) {
  used("Documents/U\u0308bersicht.txt", 100);  // as some file systems hand names out
  used("Documents/Plan.txt", 200);
  openDropdown();
  mac.type("\u00FCbers");
  EXPECT_EQ(titles(), Names{"U\u0308bersicht.txt"});
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{(mac.home() / "Documents/U\u0308bersicht.txt").string()})
      << "opened as it is stored";
}

TEST_F(RecentList, ANameTypedDecomposedFindsOneStoredComposed) {
  used("Documents/\u00DCbersicht.txt", 100);
  used("Documents/Plan.txt", 200);
  openDropdown();
  mac.type("u\u0308bers");
  EXPECT_EQ(titles(), Names{"\u00DCbersicht.txt"});
}

TEST_F(RecentList, EmptyingTheFieldFromCodeDoesNotOpenIt) {
  used("Plan.txt", 100);
  openDropdown();
  mac.type("pl");
  mac.pressKey("cancelOperation:");
  EXPECT_EQ(strip().searchField()->text(), "");
  EXPECT_FALSE(isOpen());
}

TEST_F(RecentList, OpenedAgainItListsEverythingAfresh) {
  used("Plan.txt", 100);
  openDropdown();
  mac.type("pl");
  mac.pressKey("moveDown:");
  ASSERT_EQ(selected(), "Plan.txt");
  mac.pressKey("cancelOperation:");
  used("Budget.txt", 200);
  strip().clickSearchField();
  EXPECT_EQ(titles(), (Names{"Budget.txt", "Plan.txt"}));
  EXPECT_EQ(selected(), std::nullopt);
}

TEST_F(RecentList, FollowsTheApplicationInFront) {
  used("Plan.txt", 100);
  used("Drawing.svg", 200, "org.example.painter");
  openDropdown();
  mac.pressKey("cancelOperation:");
  auto painter = mac.launch({.bundleId = "org.example.painter", .name = "Painter"});
  painter.open("Canvas", {100, 200, 1200, 600});
  strip().clickSearchField();
  EXPECT_EQ(titles(), Names{"Drawing.svg"});
}

TEST_F(RecentList, OnlyTheHomeFolderItselfAndWhatIsInItIsShortened) {
  used("Plan.txt", 300);
  const auto neighbour = std::filesystem::path(mac.home().string() + "-2");
  std::filesystem::create_directory(neighbour);
  std::ofstream(neighbour / "Other.txt") << "text";
  record((neighbour / "Other.txt").string(), 200);
  record("/etc/hostname", 100);
  openDropdown();
  EXPECT_EQ(titles(), (Names{"Plan.txt", "Other.txt", "hostname"}));
  EXPECT_EQ(folders(), (Names{"~", neighbour.string(), "/etc"}));
  std::filesystem::remove_all(neighbour);
}

TEST_F(RecentList, RowsStandAndLookAsTheyShould) {
  used("Documents/Plan.txt", 100);
  used("Documents/Report.txt", 200);
  openDropdown();
  const auto& items = dropdown().drawing().items();
  ASSERT_EQ(items.size(), 4);
  // The list keeps 10 to the sides and 8 above, a row is 34 high, and its texts begin 4 inside.
  EXPECT_EQ(items[0].kind, DrawnItem::Kind::truncatedText);
  EXPECT_EQ(items[0].rect, (ViewRect{14, 9, 452, 16}));
  EXPECT_EQ(items[0].color, Color::white());
  EXPECT_EQ(items[1].kind, DrawnItem::Kind::middleTruncatedText);
  EXPECT_EQ(items[1].rect, (ViewRect{14, 27, 452, 13}));
  EXPECT_EQ(items[1].color, Color::white(0.55));
  EXPECT_EQ(items[2].rect, (ViewRect{14, 43, 452, 16}));
  EXPECT_EQ(items[3].rect, (ViewRect{14, 61, 452, 13}));
}

// --- for a user who cannot see it ---

TEST_F(RecentList, AScreenReaderFindsTheListInItsPlaceAndPressesARow) {
  used("Report.txt", 300);
  const auto plan = used("Plan.txt", 100);
  openDropdown();
  EXPECT_EQ(mac.screenReader().element("Recent files > Recent files").frame, (ViewRect{10, 8, 460, 284}));
  EXPECT_TRUE(mac.screenReader().element("Plan.txt").canBePressed);
  EXPECT_THROW(mac.screenReader().showMenu("Plan.txt"), std::runtime_error) << "a row has no menu";
  EXPECT_TRUE(opened().empty());
  mac.screenReader().press("Plan.txt");
  EXPECT_EQ(opened(), Names{plan});
}

TEST_F(RecentList, AScreenReaderHearsWhatFitsTheQueryAndWhereTheKeysAre) {
  used("Report.txt", 300);
  used("Plan.txt", 100);
  openDropdown();
  mac.screenReader().start();
  mac.type("re");
  EXPECT_EQ(mac.screenReader().heard(), Names{"- row Plan.txt"});
  mac.pressKey("moveDown:");
  EXPECT_EQ(mac.screenReader().heard(), (Names{"row Report.txt selected", "row Report.txt has the keys"}));
  mac.pressKey("moveLeft:");
  EXPECT_EQ(mac.screenReader().heard(), Names{"row Report.txt has the keys no more"});
}

TEST_F(RecentList, AFileThatIsListedNoMoreCannotBePressed) {
  used("Plan.txt", 100);
  const auto panel = mac.platform().panels.makePanel({.contentSize = {480, 300}});
  RecentView view(panel->host(), std::make_shared<StateStore>(pellar.store().url()), mac.platform());
  view.reload("");
  ASSERT_EQ(view.items().size(), 1U);
  EXPECT_FALSE(view.perform(AccessibleAction::press, (mac.home() / "Gone.txt").string()));
  EXPECT_TRUE(opened().empty());
}

// --- with many files ---

TEST_F(RecentList, TheWheelAndTheScrollerBringLaterFilesIntoSight) {
  for (int i = 0; i < 40; ++i) used("File " + std::to_string(100 + i) + ".txt", 1000 - i);
  openDropdown();
  EXPECT_EQ(titles().front(), "File 100.txt");
  EXPECT_EQ(titles().size(), 9) << "no more than fit are drawn";
  const ScreenPoint middle{dropdown().frame().midX(), dropdown().frame().midY()};
  mac.pointer().scroll(middle, 2);
  EXPECT_EQ(titles().front(), "File 104.txt");
  mac.pointer().scroll(middle, -1);
  EXPECT_EQ(titles().front(), "File 102.txt");
  mac.pointer().scroll(middle, 100);
  EXPECT_EQ(titles().back(), "File 139.txt");
  // The scroller's knob, now at the bottom, back to the top.
  const ScreenPoint knob{dropdown().frame().maxX() - 14, dropdown().frame().minY() + 20};
  mac.pointer().drag(knob, {knob.x, knob.y + 290});
  EXPECT_EQ(titles().front(), "File 100.txt");
  EXPECT_TRUE(isOpen());
  EXPECT_TRUE(opened().empty());
}

TEST_F(RecentList, ANewQueryBeginsAtTheTop) {
  for (int i = 0; i < 40; ++i) used("File " + std::to_string(100 + i) + ".txt", 1000 - i);
  openDropdown();
  mac.pointer().scroll({dropdown().frame().midX(), dropdown().frame().midY()}, 5);
  mac.type("file");
  EXPECT_EQ(titles().front(), "File 100.txt");
}

TEST_F(RecentList, HostileNamesAreListedAndOpenedAsTheyAre) {
  const auto newline = used("two\nlines.txt", 300);
  used(std::string(250, 'x'), 200);
  used("\xE2\x80\xAEright to left.txt", 100);
  openDropdown();
  EXPECT_EQ(titles().size(), 3);
  mac.pressKey("insertNewline:");
  EXPECT_EQ(opened(), Names{newline});
}

TEST_F(RecentList, APathWithAZeroByteIsNotTakenForTheFileBeforeIt) {
  const auto plan = used("Plan.txt", 100);
  record(plan + std::string("\0.txt", 5), 200);
  record("", 300);
  openDropdown();
  EXPECT_EQ(titles(), Names{"Plan.txt"});
}

TEST_F(RecentList, AHundredThousandEntriesCostNothingToShowAndLittleToFilter) {
  // As a damaged or foreign state file may hold; what the program itself records is never that long.
  const auto path = file("Needle.txt");
  pellar.store().update([&](AppState& state) {
    for (int i = 0; i < 100'000; ++i) {
      const std::string name = "/nowhere/File " + std::to_string(i) + ".txt";
      state.recent[name] = i;
      state.recentApp[name] = "org.example.editor";
    }
    state.recent[path] = 1;
    state.recentApp[path] = "org.example.editor";
  });
  openDropdown();
  EXPECT_EQ(titles(), Names{"Needle.txt"});
  mac.type("n");
  EXPECT_EQ(titles(), Names{"Needle.txt"});
  mac.type("!");
  EXPECT_EQ(titles(), Names{});
}

TEST(RecentFile, AHundredThousandEntriesInTheStateFileAreReadAndCutWithTheNextUse) {
  SimMac mac;
  const auto url = StateStore::defaultURL(mac.platform().folders.applicationSupport);
  const std::string here = mac.home() / "Here.txt";
  std::ofstream(here) << "text";
  {
    StateStore before(url);
    before.update([&](AppState& state) {
      state.settings.acceptedEulaVersion = "1";
      for (int i = 0; i < 100'000; ++i) {
        const std::string name = "/nowhere/File " + std::to_string(i) + ".txt";
        state.recent[name] = i;
        state.recentApp[name] = "org.example.editor";
      }
      state.recent[here] = 200'000;
      state.recentApp[here] = "org.example.editor";
    });
  }
  auto editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  editor.open("Plan", {100, 200, 1200, 600});
  AppDelegate pellar(mac.platform());
  pellar.applicationDidFinishLaunching();
  mac.settle();
  EXPECT_EQ(pellar.store().state().recent.size(), 100'001U);
  mac.strip().clickSearchField();
  mac.type("here");
  mac.pressKey("insertNewline:");
  EXPECT_EQ(mac.workspace().opened(), std::vector<std::string>{here});
  const AppState after = StateStore(url).state();
  EXPECT_EQ(after.recent.size(), 300U);
  EXPECT_EQ(after.recentApp.size(), 300U);
  EXPECT_TRUE(after.recent.contains("/nowhere/File 99999.txt"));
  EXPECT_TRUE(after.recent.contains("/nowhere/File 99701.txt"));
  EXPECT_FALSE(after.recent.contains("/nowhere/File 99700.txt"));
}

TEST_F(RecentList, OfAHundredThousandFilesThatAreThereOnlyThoseInSightAreDrawn) {
  const auto path = file("Needle.txt");
  pellar.store().update([&](AppState& state) {
    // One file under very many names.
    for (unsigned i = 0; i < 100'000; ++i) {
      std::string alias = mac.home().string();
      for (unsigned bit = 0; bit < 17; ++bit) alias += (i >> bit & 1U) != 0 ? "/." : "//";
      state.recent[alias + "/Needle.txt"] = i;
      state.recentApp[alias + "/Needle.txt"] = "org.example.editor";
    }
  });
  openDropdown();
  EXPECT_EQ(titles().size(), 9U);
  mac.type("n");
  EXPECT_EQ(titles().size(), 9U);
  mac.pressKey("insertNewline:");
  ASSERT_EQ(opened().size(), 1U);
  EXPECT_EQ(std::filesystem::canonical(opened()[0]), std::filesystem::canonical(path));
  EXPECT_EQ(state().recent.size(), 300U) << "cut to what the program keeps";
}

}  // namespace
}  // namespace pellar
