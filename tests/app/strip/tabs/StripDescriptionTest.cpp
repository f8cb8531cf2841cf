#include <gtest/gtest.h>

#include "tests/app/strip/tabs/StripFixture.h"

namespace pellar {
namespace {

// What the strip tells of itself to somebody who cannot see it.
class StripDescription : public StripTest {
 protected:
  using Elements = std::vector<AccessibleElement>;
  using Names = std::vector<std::string>;

  [[nodiscard]] AccessibleElement strip() const { return view.accessibleElement(); }
  [[nodiscard]] AccessibleElement tabGroup() const { return strip().children.at(0); }
  [[nodiscard]] AccessibleElement named(const std::string& name) const {
    for (const AccessibleElement& element : everything())
      if (element.name == name) return element;
    ADD_FAILURE() << "the strip tells of no " << name;
    return {};
  }
  // The strip with all that it holds.
  [[nodiscard]] Elements everything() const {
    Elements all;
    collect(strip(), all);
    return all;
  }
  static Names namesOf(const Elements& elements) {
    Names names;
    for (const AccessibleElement& element : elements) names.push_back(element.name);
    return names;
  }
  // What a click and what an assistive technology bring about for each element that can be pressed.
  void expectEveryPressDoesWhatAClickDoes() {
    for (const AccessibleElement& element : everything()) {
      if (!element.canBePressed || element.role == AccessibleRole::searchField) continue;
      const MouseEvent click = at(element.frame.midX(), element.frame.midY());
      happened();
      press(click);
      release();
      const auto clicked = happened();
      EXPECT_TRUE(view.perform(AccessibleAction::press, element.id));
      EXPECT_EQ(happened(), clicked) << element.name;
      EXPECT_FALSE(clicked.empty()) << element.name;
    }
  }

 private:
  static void collect(const AccessibleElement& element, Elements& all) {
    all.push_back(element);
    for (const AccessibleElement& child : element.children) collect(child, all);
  }
};

TEST_F(StripDescription, NamesTheTabsFromLeftToRightAndSaysWhichIsInFront) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report", true), tab(103, "Notes")});
  const auto tabs = tabGroup().children;
  EXPECT_EQ(tabGroup().role, AccessibleRole::tabGroup);
  EXPECT_EQ(namesOf(tabs), (Names{"Plan", "Report", "Notes"}));
  for (std::size_t i = 0; i < tabs.size(); ++i) {
    EXPECT_EQ(tabs[i].role, AccessibleRole::tab);
    EXPECT_EQ(tabs[i].selected, i == 1);
    EXPECT_EQ(tabs[i].frame, view.geometry().tabRect(i));
  }
}

TEST_F(StripDescription, TheGroupOfTabsReachesFromTheFirstToTheLast) {
  EXPECT_EQ(tabGroup().frame, (ViewRect{6, 3, 500, 26}));
  EXPECT_EQ(tabGroup().frame.maxX(), tabGroup().children.back().frame.maxX());
}

TEST_F(StripDescription, TheCloseMarkOfATabIsAButtonThatCanBePressed) {
  for (const AccessibleElement& tab : tabGroup().children) {
    ASSERT_EQ(namesOf(tab.children), Names{"Close"});
    EXPECT_EQ(tab.children[0].role, AccessibleRole::button);
    EXPECT_TRUE(tab.children[0].canBePressed);
  }
}

TEST_F(StripDescription, HasAWordForEveryToolThatIsSeen) {
  const auto all = strip().children;
  EXPECT_EQ(namesOf(all), (Names{"Tabs", "Search recent files", "Rename", "Auto-save", "Save all",
                                 "Close all", "Groups", "New document", "Minimise", "Zoom", "Close"}));
  const StripLayout layout = view.geometry();
  const auto tools = layout.tools();
  ASSERT_EQ(all.size(), tools.size() + 2);
  for (std::size_t i = 0; i < tools.size(); ++i) {
    EXPECT_EQ(all[i + 2].frame, tools[i].rect);
    EXPECT_FALSE(all[i + 2].help.empty()) << all[i + 2].name;
  }
}

TEST_F(StripDescription, SaysWhatEachThingDoes) {
  const std::vector<std::pair<std::string, std::string>> field{
      {"Search recent files", "Finds a file that was used before"},
      {"Rename", "Gives the file of this window another name"},
      {"Auto-save", "Saves open documents every few minutes"},
      {"Save all", "Saves every open document of the application"},
      {"Close all", "Closes every window of the application"},
      {"Groups", "Opens a group of files, or keeps the open ones as a group"},
      {"New document", "Opens a new document"},
      {"Minimise", "Puts this window away"},
      {"Zoom", "Makes this window fill the screen, or gives it its old size back"}};
  for (const auto& [name, help] : field) EXPECT_EQ(named(name).help, help);
  EXPECT_EQ(tabGroup().children[0].children[0].help, "Closes the window of this tab");
  EXPECT_EQ(strip().children.back().help, "Closes this window");
  host.size = {400, 32};
  EXPECT_EQ(named("More").help, "Shows the tools for which the strip has no room");
  EXPECT_EQ(named("Search recent files").help, "Finds a file that was used before");
}

TEST_F(StripDescription, EverythingButTheGroupsCanBePressed) {
  const auto pressable = [this] {
    Names names;
    for (const AccessibleElement& element : everything())
      if (!element.canBePressed) names.push_back(element.name);
    return names;
  };
  EXPECT_EQ(pressable(), (Names{"Tab strip", "Tabs"}));
  host.size = {400, 32};
  EXPECT_EQ(pressable(), (Names{"Tab strip", "Tabs"}));
}

TEST_F(StripDescription, WithoutTabsTheGroupIsEmpty) {
  view.setTabs({});
  EXPECT_EQ(tabGroup().children, Elements{});
  EXPECT_EQ(tabGroup().frame, ViewRect{});
}

TEST_F(StripDescription, WhatIsNoLongerSeenCannotBePressed) {
  const std::string mark = tabGroup().children[0].children[0].id;
  const std::string field = named("Search recent files").id;
  auto many = numberedTabs(40);
  many[0] = tab(101, "Plan");
  view.setTabs(many);
  ASSERT_TRUE(tabGroup().children[0].children.empty());
  EXPECT_FALSE(view.perform(AccessibleAction::press, mark));
  EXPECT_FALSE(view.perform(AccessibleAction::press, field));
  EXPECT_EQ(happened(), Names{});
}

TEST_F(StripDescription, FollowsTheToolsThatFoldAway) {
  host.size = {400, 32};
  EXPECT_EQ(namesOf(strip().children),
            (Names{"Tabs", "Search recent files", "More", "Minimise", "Zoom", "Close"}));
  EXPECT_EQ(named("Search recent files").role, AccessibleRole::button);
  view.setOfficeTools(false);
  EXPECT_EQ(namesOf(strip().children), (Names{"Tabs", "Close all", "Groups", "Minimise", "Zoom", "Close"}));
}

TEST_F(StripDescription, TellsWhereTheSearchFieldIs) {
  EXPECT_EQ(named("Search recent files").role, AccessibleRole::searchField);
  EXPECT_EQ(named("Search recent files").frame, host.searchField->frame());
}

TEST_F(StripDescription, SaysWhetherAutoSaveIsOn) {
  EXPECT_EQ(named("Auto-save").role, AccessibleRole::checkBox);
  EXPECT_EQ(named("Auto-save").checked, false);
  view.setAutoSaveOn(true);
  EXPECT_EQ(named("Auto-save").checked, true);
}

TEST_F(StripDescription, SaysTheColourOfATagInAWord) {
  TabItem tagged = tab(101, "Plan");
  tagged.tag = Color::of(SystemColor::purple);
  view.setTabs({tagged, tab(102, "Report")});
  EXPECT_EQ(named("Plan").help, "Colour tag: Purple");
  EXPECT_EQ(named("Report").help, "");
}

TEST_F(StripDescription, NamesATabTooNarrowForItsLabel) {
  host.size = {600, 32};
  view.setTabs(numberedTabs(12));
  EXPECT_LT(view.geometry().tabWidth(), StripLayout::labelMinimumTabWidth);
  EXPECT_EQ(tabGroup().children.at(6).name, "7");
  EXPECT_TRUE(tabGroup().children.at(6).children.empty());
}

TEST_F(StripDescription, EveryPressDoesWhatAClickInTheMiddleDoes) {
  expectEveryPressDoesWhatAClickDoes();
  EXPECT_EQ(everything().size(), 18U);
  // Crowded; with labels; and with tabs that have neither label nor close mark.
  for (const auto& [width, count] : {std::pair{700, 3}, {1200, 9}, {640, 10}, {1200, 12}}) {
    host.size.width = width;
    view.setTabs(numberedTabs(count));
    expectEveryPressDoesWhatAClickDoes();
  }
  view.setRenameTool(false);
  view.setOfficeTools(false);
  expectEveryPressDoesWhatAClickDoes();
}

TEST_F(StripDescription, PressesAToolThatTheTabsStandOver) {
  host.size = {300, 32};
  view.setTabs(numberedTabs(20));
  ASSERT_TRUE(view.perform(AccessibleAction::press, named("Minimise").id));
  EXPECT_EQ(happened(), (Names{words("action ", static_cast<int>(StripAction::minimize), " at ",
                                     place(on(StripAction::minimize)))}));
}

TEST_F(StripDescription, PressingTheSearchFieldOpensTheSearch) {
  ASSERT_TRUE(view.perform(AccessibleAction::press, named("Search recent files").id));
  ASSERT_EQ(events.size(), 1U);
  EXPECT_TRUE(events[0].starts_with("action 0 at ")) << events[0];
}

TEST_F(StripDescription, OpensTheMenuOfATabWhereTheTabIs) {
  ASSERT_TRUE(view.perform(AccessibleAction::showMenu, named("Report").id));
  EXPECT_EQ(happened(), (Names{words("menu 102 at ", place(onTab("Report")))}));
  EXPECT_TRUE(named("Report").hasMenu);
  EXPECT_FALSE(view.perform(AccessibleAction::showMenu, named("Zoom").id));
  EXPECT_FALSE(view.perform(AccessibleAction::showMenu, tabGroup().children[0].children[0].id));
  EXPECT_EQ(happened(), Names{});
}

TEST_F(StripDescription, ATabThatIsGoneCannotBePressed) {
  const std::string gone = named("Report").id;
  view.setTabs({tab(101, "Plan"), tab(103, "Notes")});
  EXPECT_FALSE(view.perform(AccessibleAction::press, gone));
  EXPECT_FALSE(view.perform(AccessibleAction::press, "tab of another strip"));
  EXPECT_EQ(happened(), Names{});
}

TEST_F(StripDescription, ATabKeepsItsIdentityWhenItMovesAndIsRenamed) {
  const std::string id = named("Report").id;
  view.setTabs({tab(102, "Report 2"), tab(101, "Plan")});
  EXPECT_EQ(named("Report 2").id, id);
}

TEST_F(StripDescription, APressEndsADragAndLeavesTheTabWhereItWas) {
  press(onTab("Plan"));
  dragTo(400);
  happened();
  ASSERT_TRUE(view.perform(AccessibleAction::press, named("Notes").id));
  EXPECT_EQ(happened(), (Names{"hover none", "select 103"}));
  release();
  EXPECT_EQ(happened(), Names{});
}

TEST_F(StripDescription, APressMayDoAwayWithTheStrip) {
  FakeViewHost otherHost({1200, 32});
  auto doomed = std::make_unique<TabStripView>(otherHost);
  const std::string zoom = "tool Zoom";
  doomed->onAction = [&](StripAction, const MouseEvent&) { doomed.reset(); };
  EXPECT_TRUE(doomed->perform(AccessibleAction::press, zoom));
  EXPECT_EQ(doomed, nullptr);
}

TEST_F(StripDescription, NothingIsPressedOnAStripThatIsInNoWindow) {
  const std::string id = named("Report").id;
  host.inWindow = false;
  EXPECT_FALSE(view.perform(AccessibleAction::press, id));
}

TEST_F(StripDescription, TheHostHearsOfEveryChangeAlsoOfALabelThatIsNotDrawn) {
  host.size = {600, 32};
  view.setTabs(numberedTabs(12));
  host.forgetRequests();
  auto renamed = numberedTabs(12);
  renamed[3].label = "Four";
  view.setTabs(renamed);
  EXPECT_EQ(host.elementChanges, 1);
  view.setTabs(renamed);
  EXPECT_EQ(host.elementChanges, 1);
  host.forgetRequests();
  view.setAutoSaveOn(true);
  EXPECT_GT(host.elementChanges, 0);
  host.forgetRequests();
  view.setOfficeTools(false);
  EXPECT_GT(host.elementChanges, 0);
}

}  // namespace
}  // namespace pellar
