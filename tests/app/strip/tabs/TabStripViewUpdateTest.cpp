#include <gtest/gtest.h>

#include "tests/app/strip/tabs/StripFixture.h"

namespace pellar {
namespace {

using Rects = std::vector<ViewRect>;

class StripUpdate : public StripTest {
 protected:
  void expectNothingAsked() {
    EXPECT_EQ(host.layoutRequests, 0);
    EXPECT_EQ(host.fullRedraws, 0);
    EXPECT_EQ(host.redrawn, Rects{});
  }
  void expectOnlyRedrawn(const Rects& rects) {
    EXPECT_EQ(host.layoutRequests, 0);
    EXPECT_EQ(host.fullRedraws, 0);
    EXPECT_EQ(host.redrawn, rects);
    host.forgetRequests();
  }
  void expectEverythingAsked() {
    EXPECT_GE(host.layoutRequests, 1);
    EXPECT_GE(host.fullRedraws, 1);
    host.forgetRequests();
  }
};

TEST_F(StripUpdate, ANewStripHasNoTabsAndAnnouncesItsSearch) {
  FakeViewHost newHost({1200, 32});
  TabStripView newView(newHost);
  EXPECT_TRUE(newView.tabs().empty());
  EXPECT_EQ(newHost.searchField->placeholder, "Search recent files");
  EXPECT_EQ(&newView.searchField(), newHost.searchField);
  EXPECT_EQ(newView.geometry().tools().size(), 9U);
  EXPECT_EQ(newView.geometry().tools()[1].tool.text, "○ Auto-save");
}

TEST_F(StripUpdate, TheSameTabsAgainAskForNothing) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report"), tab(103, "Notes")});
  expectNothingAsked();
}

TEST_F(StripUpdate, TheSameFlagsAgainAskForNothing) {
  view.setSearchExpanded(false);
  view.setOfficeTools(true);
  view.setRenameTool(true);
  view.setAccent(Color::of(SystemColor::blue));
  view.setAutoSaveOn(false);
  expectNothingAsked();
}

TEST_F(StripUpdate, ANewTitleRedrawsItsTabOnly) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report 2"), tab(103, "Notes")});
  expectOnlyRedrawn({{174, 3, 164, 26}});
  EXPECT_EQ(view.tabs()[1].label, "Report 2");
}

TEST_F(StripUpdate, AnotherActiveTabRedrawsTheTwo) {
  view.setTabs({tab(101, "Plan", true), tab(102, "Report"), tab(103, "Notes")});
  expectOnlyRedrawn({{6, 3, 164, 26}});
  view.setTabs({tab(101, "Plan"), tab(102, "Report"), tab(103, "Notes", true)});
  expectOnlyRedrawn({{6, 3, 164, 26}, {342, 3, 164, 26}});
}

TEST_F(StripUpdate, ANewTagRedrawsItsTabOnly) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report"), {103, "Notes", Color::of(SystemColor::red), false}});
  expectOnlyRedrawn({{342, 3, 164, 26}});
}

TEST_F(StripUpdate, ANewTitleOnATabJustWideEnoughForItRedrawsIt) {
  view.setOfficeTools(false);
  host.size.width = 192 + 10 * 64;
  view.setTabs(numberedTabs(10));
  ASSERT_DOUBLE_EQ(view.geometry().tabWidth(), 64);
  host.forgetRequests();
  auto tabs = numberedTabs(10);
  tabs[0].label = "Plan";
  view.setTabs(tabs);
  EXPECT_EQ(host.redrawn, (std::vector<ViewRect>{view.geometry().tabRect(0)}));
}

TEST_F(StripUpdate, ATitleThatIsNotShownRedrawsNothing) {
  host.size.width = 300;
  view.setTabs(numberedTabs(40));
  host.forgetRequests();
  auto tabs = numberedTabs(40);
  tabs[3].label = "Renamed";
  view.setTabs(tabs);
  expectNothingAsked();
  EXPECT_EQ(view.tabs()[3].label, "Renamed");
}

TEST_F(StripUpdate, ATabBeyondTheEndRedrawsNothing) {
  host.size.width = 300;
  view.setTabs(numberedTabs(40));
  host.forgetRequests();
  auto tabs = numberedTabs(40);
  tabs[30].active = true;
  view.setTabs(tabs);
  expectNothingAsked();
}

TEST_F(StripUpdate, AnotherNumberOfTabsAsksForEverything) {
  view.setTabs({tab(101, "Plan"), tab(102, "Report")});
  expectEverythingAsked();
  view.setTabs({});
  expectEverythingAsked();
  view.setTabs({tab(101, "Plan")});
  expectEverythingAsked();
}

TEST_F(StripUpdate, OtherToolsAskForEverything) {
  view.setOfficeTools(false);
  expectEverythingAsked();
  view.setOfficeTools(true);
  expectEverythingAsked();
  view.setRenameTool(false);
  expectEverythingAsked();
  view.setSearchExpanded(true);
  expectEverythingAsked();
}

TEST_F(StripUpdate, AnotherAccentRedrawsTheTabs) {
  view.setAccent(Color::of(SystemColor::green));
  expectOnlyRedrawn({{6, 3, 500, 26}});
}

TEST_F(StripUpdate, AnotherAccentWithoutTabsRedrawsNothing) {
  view.setTabs({});
  host.forgetRequests();
  view.setAccent(Color::of(SystemColor::green));
  expectNothingAsked();
}

TEST_F(StripUpdate, AutoSaveRedrawsItsToolOnly) {
  view.setAutoSaveOn(true);
  expectOnlyRedrawn({{792, 4, 82, 24}});
}

TEST_F(StripUpdate, AutoSaveThatIsNotShownRedrawsNothing) {
  view.setOfficeTools(false);
  host.forgetRequests();
  view.setAutoSaveOn(true);
  expectNothingAsked();
}

TEST_F(StripUpdate, DraggingATabRedrawsWhereItWasAndIsAndItsMark) {
  press(at(50));
  host.forgetRequests();
  dragTo(300);
  EXPECT_EQ(host.fullRedraws, 0);
  EXPECT_EQ(host.layoutRequests, 0);
  EXPECT_EQ(host.redrawn, (Rects{{6, 3, 164, 26}, {218, 3, 164, 26}, {339, 5, 2, 22}}));
  host.forgetRequests();
  dragTo(430);
  expectOnlyRedrawn({{218, 3, 164, 26}, {339, 5, 2, 22}, {348, 3, 164, 26}, {507, 5, 2, 22}});
  release(430);
  expectOnlyRedrawn({{348, 3, 164, 26}, {507, 5, 2, 22}, {6, 3, 164, 26}});
}

TEST_F(StripUpdate, WhatChangesUnderADragRedrawsEverythingSinceTabsStandElsewhere) {
  press(at(50));
  dragTo(300);
  host.forgetRequests();
  view.setTabs({tab(101, "Plan 2"), tab(102, "Report"), tab(103, "Notes")});
  EXPECT_EQ(host.fullRedraws, 1);
  view.setAccent(Color::of(SystemColor::green));
  EXPECT_EQ(host.fullRedraws, 2);
}

TEST_F(StripUpdate, AutoSaveWhoseOtherTextIsWiderAsksForEverything) {
  host.measure.wide = "●";
  view.setAutoSaveOn(true);
  EXPECT_EQ(view.geometry().toolRect(StripAction::autoSave)->width, 88);
  expectEverythingAsked();
}

TEST_F(StripUpdate, AClickRedrawsNothing) {
  press(at(50));
  release(50);
  expectNothingAsked();
}

TEST_F(StripUpdate, LayoutPlacesTheSearchField) {
  FakeViewHost newHost({1200, 32});
  TabStripView newView(newHost);
  newView.layout();
  EXPECT_FALSE(newHost.searchField->hidden);
  EXPECT_EQ(newHost.searchField->place, (ViewRect{520, 5, 210, 22}));
}

TEST_F(StripUpdate, LayoutHidesAndShowsTheSearchField) {
  view.setTabs(numberedTabs(5));
  view.layout();
  EXPECT_TRUE(host.searchField->hidden);
  EXPECT_EQ(host.searchField->place, (ViewRect{492, 5, 210, 22}));

  view.setSearchExpanded(true);
  view.layout();
  EXPECT_FALSE(host.searchField->hidden);
  EXPECT_EQ(host.searchField->place, (ViewRect{520, 5, 210, 22}));

  view.setOfficeTools(false);
  view.layout();
  EXPECT_TRUE(host.searchField->hidden);
}

TEST_F(StripUpdate, LayoutLeavesAFieldThatStandsRightAlone) {
  const int frames = host.searchField->frameWrites;
  const int shows = host.searchField->hiddenWrites;
  view.layout();
  view.layout();
  EXPECT_EQ(host.searchField->frameWrites, frames);
  EXPECT_EQ(host.searchField->hiddenWrites, shows);
}

}  // namespace
}  // namespace pellar
