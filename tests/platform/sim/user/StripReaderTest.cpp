#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "app/strip/tabs/TabStripView.h"
#include "platform/sim/SimMac.h"
#include "platform/sim/panel/SimSearchField.h"
#include "platform/sim/user/StripReader.h"

namespace pellar {

// The strip's view on a panel, without the program around it.
class StripReaderTest : public ::testing::Test {
 protected:
  StripReaderTest() {
    PanelStyle style;
    style.canBecomeKey = true;
    panel = mac.panels().makePanel(style);
    view = std::make_unique<TabStripView>(panel->host());
    panel->setView(view.get());
    view->onSelect = [this](WindowId id) { heard.push_back("select " + std::to_string(id)); };
    view->onClose = [this](WindowId id) { heard.push_back("close " + std::to_string(id)); };
    view->onMenu = [this](WindowId id, const MouseEvent&) { heard.push_back("menu " + std::to_string(id)); };
    view->onAction = [this](StripAction action, const MouseEvent&) {
      heard.push_back("action " + std::to_string(static_cast<int>(action)));
    };
    view->onReorder = [this](WindowId id, int index) {
      heard.push_back("reorder " + std::to_string(id) + " to " + std::to_string(index));
    };
    view->onDrag = [this](ScreenPoint offset) { dragged = offset; };
    view->onDragEnd = [this] { heard.emplace_back("drag end"); };
    view->setTabs({{1, "Report", std::nullopt, false},
                   {2, "Plan", Color::of(SystemColor::green), true},
                   {3, "Notes", std::nullopt, false}});
    show(1200);
  }
  ~StripReaderTest() override { panel->setView(nullptr); }

  void show(double width) {
    panel->setFrame({100, 600, width, 32}, true);
    panel->orderFrontRegardless();
    mac.settle();
  }

  SimMac mac;
  std::unique_ptr<Panel> panel;
  std::unique_ptr<TabStripView> view;  // depends-on: panel
  std::vector<std::string> heard;
  ScreenPoint dragged;
};

TEST_F(StripReaderTest, ReadsTheTabsAsTheyAreDrawn) {
  const auto strip = mac.strip();
  EXPECT_TRUE(strip.visible());
  EXPECT_EQ(strip.tabs(), (std::vector<std::string>{"Report", "Plan", "Notes"}));
  EXPECT_EQ(strip.activeTab(), "Plan");
  EXPECT_EQ(strip.tagOf("Plan"), Color::of(SystemColor::green));
  EXPECT_EQ(strip.tagOf("Notes"), std::nullopt);
  EXPECT_EQ(strip.tools().back(), "✕");
  EXPECT_NE(strip.searchField(), nullptr);
  EXPECT_EQ(strip.searchField()->placeholder(), "Search recent files");
}

TEST_F(StripReaderTest, WorksTheTabsWithTheMouse) {
  mac.strip().clickTab("Notes");
  mac.strip().closeTab("Report");
  mac.strip().middleClickTab("Plan");
  mac.strip().rightClickTab("Plan");
  mac.strip().controlClickTab("Notes");
  EXPECT_EQ(heard, (std::vector<std::string>{"select 3", "close 1", "close 2", "menu 2", "menu 3"}));
}

TEST_F(StripReaderTest, DragsATabToAnyPlace) {
  mac.strip().dragTab("Notes").to(0);
  mac.strip().dragTab("Report").to(1);
  mac.strip().dragTab(0).to(2);
  mac.strip().dragTab("Plan").to(1);
  EXPECT_EQ(heard, (std::vector<std::string>{"reorder 3 to 0", "reorder 1 to 1", "reorder 1 to 2",
                                             "reorder 2 to 1"}));
}

TEST_F(StripReaderTest, WorksTheEmptyStripAndTheTools) {
  mac.strip().dragEmptyStrip(30, -20);
  EXPECT_EQ(dragged, (ScreenPoint{30, -20}));
  mac.strip().doubleClickEmptyStrip();
  mac.strip().clickTool("Save all");
  EXPECT_EQ(heard, (std::vector<std::string>{"drag end", "action 9", "action 4"}));
}

TEST_F(StripReaderTest, CountsTabsTooNarrowForALabel) {
  std::vector<TabItem> many;
  for (WindowId id = 0; id < 12; ++id) many.push_back({id, "Document", std::nullopt, id == 7});
  view->setTabs(many);
  show(700);
  EXPECT_EQ(mac.strip().tabs(), std::vector<std::string>(12));
  EXPECT_EQ(mac.strip().activeTabIndex(), 7);
  mac.strip().clickTab(4);
  mac.strip().dragTab(7).to(3);
  EXPECT_EQ(heard, (std::vector<std::string>{"select 4", "reorder 7 to 3"}));
  mac.strip().clickSearchTool();
  EXPECT_EQ(heard.back(), "action 0");
}

TEST_F(StripReaderTest, SaysWhatItSeesInsteadOfWhatWasNamed) {
  EXPECT_THROW(mac.strip().clickTab("Elsewhere"), std::runtime_error);
  panel->orderOut();
  EXPECT_FALSE(mac.strip().visible());
  EXPECT_THROW(mac.strip().clickTab("Plan"), std::runtime_error);
}

}  // namespace pellar
