// The judge before worlds that are wrong: one that finds nothing is worth nothing.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "app/shell/AppDelegate.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/simulation/Judge.h"

namespace pellar {
namespace {

using Truth = std::optional<AttributeValue>;

// Lets the program see what is not so, and do other than it asks for.
class Blinkers final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  // What the program reads instead.
  std::function<Truth(std::string_view name, Truth truth)> seen;

  [[nodiscard]] Truth attribute(const Element& element, std::string_view name) override {
    auto truth = ForwardingAccessibility::attribute(element, name);
    return seen ? seen(name, std::move(truth)) : truth;
  }

  // What is written instead; absent for nothing.
  std::function<Truth(std::string_view name, const AttributeValue& asked)> written;

  void set(const Element& element, std::string_view name, const AttributeValue& value) override {
    const Truth instead = written ? written(name, value) : value;
    if (instead) ForwardingAccessibility::set(element, name, *instead);
  }
};

class JudgedProgram : public testing::Test {
 protected:
  JudgedProgram() {
    applications.push_back(mac.launch({.bundleId = "org.example.editor", .name = "Editor"}));
    applications.push_back(mac.launch({.bundleId = "com.microsoft.Word", .name = "Word"}));
    editor().open("Plan", {100, 200, 900, 600});
    editor().open("Report", {150, 250, 900, 600});
    mac.activate(editor());
    program.store().update([](AppState& state) { state.settings.acceptedEulaVersion = "1"; });
    judge.state().adopt();
    program.applicationDidFinishLaunching();
    rest();
  }

  SimApplication& editor() { return applications.front(); }
  void rest() {
    mac.settle();
    judge.atRest();
  }
  // The user moves the front window, so that the program looks at all windows.
  void moveSomething() {
    judge.happened();
    judge.touched(front());
    front().moveTo({120, 220});
    rest();
  }
  SimWindow front() { return editor().windowsFrontToBack().front(); }
  // The user works the strip, and tells the judge.
  void zoom() {
    judge.happened();
    const AxRect before = front().frame();
    mac.strip().clickTool("\u25A1");
    judge.frames().zoomed(front(), before);
    rest();
  }
  void fillLeftHalf() {
    judge.happened();
    const AxRect before = front().frame();
    mac.menus().next([](SimOpenMenu& menu) { menu.choose({"Layout", "Tile left half"}); });
    mac.strip().rightClickTab(front().title());
    judge.frames().tiled(front(), before, "Tile left half");
    rest();
  }
  void dragStrip() {
    judge.happened();
    judge.log().userDragged();
    std::vector<std::pair<SimWindow, AxRect>> windows;
    for (const auto& each : editor().windowsFrontToBack()) windows.emplace_back(each, each.frame());
    mac.strip().dragEmptyStrip(30, -20);
    judge.frames().dragged(windows, {30, -20});
    rest();
  }
  [[nodiscard]] bool finds(std::string_view part) const {
    return std::ranges::any_of(judge.findings(),
                               [&](const auto& each) { return each.find(part) != std::string::npos; });
  }

  SimMac mac;
  std::vector<SimApplication> applications;
  Judge judge{mac, applications};
  Blinkers blinkers{mac.accessibility()};
  AppDelegate program{mac.platformWith(blinkers)};
};

TEST_F(JudgedProgram, IsRightWhenNothingIsWrong) {
  moveSomething();
  EXPECT_TRUE(judge.findings().empty()) << judge.findings().front();
  EXPECT_EQ(judge.count().whole, 2U);
}

TEST_F(JudgedProgram, IsWrongWhenATabStandsForADialog) {
  blinkers.seen = [](std::string_view name, Truth truth) {
    return name == "AXSubrole" ? Truth(std::string("AXStandardWindow")) : truth;
  };
  judge.happened();
  editor().open("Print", {300, 300, 400, 300}, "AXDialog");
  rest();
  EXPECT_TRUE(finds("there are other tabs than windows"));
}

TEST_F(JudgedProgram, IsWrongWhenATabBearsAnotherName) {
  blinkers.seen = [](std::string_view name, Truth truth) {
    return name == "AXTitle" ? Truth(std::string("Nonsense")) : truth;
  };
  moveSomething();
  EXPECT_TRUE(finds("[Nonsense]"));
}

TEST_F(JudgedProgram, IsWrongWhenTheStripStandsOverAnotherWindow) {
  blinkers.seen = [](std::string_view name, Truth truth) {
    return name == "AXFocusedWindow" ? Truth() : truth;
  };
  judge.happened();
  editor().focus(editor().windowsFrontToBack().back());
  rest();
  EXPECT_TRUE(finds("the strip is at"));
  EXPECT_TRUE(finds("the strip stands above another window"));
  EXPECT_TRUE(finds("the active tab is not that of the front window"));
}

TEST_F(JudgedProgram, IsWrongWhenTheStripIsAPointOff) {
  blinkers.seen = [](std::string_view name, Truth truth) {
    if (name == "AXPosition") std::get<AxPoint>(*truth).x += 1;
    return truth;
  };
  moveSomething();
  EXPECT_TRUE(finds("the strip is at"));
}

TEST_F(JudgedProgram, IsWrongWhenTheStripStaysOverAMinimisedWindow) {
  blinkers.seen = [](std::string_view name, Truth truth) {
    return name == "AXMinimized" ? Truth(false) : truth;
  };
  judge.happened();
  for (auto& each : editor().windowsFrontToBack()) {
    judge.touched(each);
    each.minimise();
  }
  rest();
  EXPECT_TRUE(finds("the strip is shown though no window in front can have it"));
}

TEST_F(JudgedProgram, IsRightWhenWindowsStandWhereTheUserPutsThem) {
  zoom();
  EXPECT_EQ(front().frame(), (AxRect{0, 57, 1440, 843}));
  zoom();
  EXPECT_EQ(front().frame(), (AxRect{150, 250, 900, 600}));
  dragStrip();
  EXPECT_EQ(editor().windowsFrontToBack().back().frame(), (AxRect{130, 220, 900, 600}));
  fillLeftHalf();
  EXPECT_EQ(front().frame(), (AxRect{0, 57, 720, 843}));
  EXPECT_TRUE(judge.findings().empty()) << judge.findings().front();
}

TEST_F(JudgedProgram, IsWrongWhenAWindowMovesByItself) {
  judge.happened();
  editor().windowsFrontToBack().back().moveTo({101, 200});
  rest();
  EXPECT_TRUE(finds("Plan stands at (101, 200, 900, 600), not at (100, 200, 900, 600)"));
}

TEST_F(JudgedProgram, IsWrongWhenAWindowIsPushedDownTooFar) {
  // Its title bar is under the menu bar, where no strip has room, and nothing looks at it.
  judge.happened();
  mac.activate(applications.back());
  rest();
  judge.happened();
  judge.touched(front());
  front().moveTo({150, 30});
  rest();
  blinkers.written = [](std::string_view name, const AttributeValue& asked) {
    return name == "AXPosition" ? Truth(AxPoint{150, 60}) : Truth(asked);
  };
  judge.happened();
  mac.activate(editor());
  rest();
  EXPECT_TRUE(finds("Report stands at (150, 60, 900, 573), not at (150, 30, 900, 600)"));
}

TEST_F(JudgedProgram, IsWrongWhenAZoomedWindowFillsLessThanItCould) {
  blinkers.written = [](std::string_view name, const AttributeValue& asked) {
    return name == "AXSize" ? Truth(Size{1440, 840}) : Truth(asked);
  };
  zoom();
  EXPECT_TRUE(finds("Report stands at (0, 57, 1440, 840), not at (0, 57, 1440, 843) as the user asked"));
}

TEST_F(JudgedProgram, IsWrongWhenASecondZoomDoesNotGiveTheFrameBack) {
  zoom();
  blinkers.written = [](std::string_view, const AttributeValue&) { return Truth(); };
  zoom();
  EXPECT_TRUE(finds("not at (150, 250, 900, 600) as the user asked"));
}

TEST_F(JudgedProgram, IsWrongWhenATileIsAnotherThanWasChosen) {
  blinkers.written = [](std::string_view name, const AttributeValue& asked) {
    return name == "AXPosition" ? Truth(AxPoint{720, 57}) : Truth(asked);
  };
  fillLeftHalf();
  EXPECT_TRUE(finds("Report stands at (720, 57, 720, 843), not at (0, 57, 720, 843) as the user asked"));
}

TEST_F(JudgedProgram, IsWrongWhenAWindowOfADraggedStackStaysBehind) {
  blinkers.written = [](std::string_view, const AttributeValue& asked) {
    const auto* const origin = std::get_if<AxPoint>(&asked);
    return origin != nullptr && origin->x < 140 ? Truth() : Truth(asked);
  };
  dragStrip();
  EXPECT_TRUE(finds("Plan stands at (100, 200, 900, 600), not at (130, 220, 900, 600) as the user asked"));
}

TEST_F(JudgedProgram, IsWrongWhenTheTabsChangePlacesByThemselves) {
  judge.log().userDragged();
  program.tracker().move(editor().windowsFrontToBack().back().id(), 0);
  moveSomething();
  EXPECT_TRUE(finds("the tabs read"));
}

TEST_F(JudgedProgram, IsWrongWhenAColourComesThatNobodyChose) {
  program.store().update([](AppState& state) { state.tags["title:Plan"] = "red"; });
  moveSomething();
  EXPECT_TRUE(finds("the colours in the file"));
}

TEST_F(JudgedProgram, IsWrongWhenAChosenColourIsNotInTheFile) {
  judge.happened();
  judge.state().tagged({"title:Plan"}, "red");
  rest();
  EXPECT_TRUE(finds("the colours in the file"));
}

TEST_F(JudgedProgram, IsWrongWhenAChosenColourIsUnderAnotherKey) {
  judge.happened();
  judge.state().tagged({"title:Plan"}, "red");
  program.store().update([](AppState& state) { state.tags["title:Report"] = "red"; });
  rest();
  EXPECT_TRUE(finds("the colours in the file"));
}

TEST_F(JudgedProgram, IsWrongWhenAColourIsInTheFileAndNotOnTheTab) {
  judge.happened();
  judge.state().tagged({"title:Plan"}, "red");
  // Saved, and no new picture drawn.
  program.store().update([](AppState& state) { state.tags["title:Plan"] = "red"; });
  rest();
  EXPECT_TRUE(finds("the tab of Plan has the colour none, not red"));
}

TEST_F(JudgedProgram, IsWrongWhenARenameLosesTheColour) {
  judge.happened();
  judge.state().tagged({"/a/Plan"}, "red");
  program.store().update([](AppState& state) { state.tags["/a/Plan"] = "red"; });
  rest();
  judge.state().renaming("Budget");
  judge.state().renamed("/a/Plan", "/a/Budget");
  program.store().update([](AppState& state) { state.settings.autoUpdateCheck = false; });
  judge.state().chose([](SavedState::Content& content) { content.autoUpdateCheck = false; });
  EXPECT_NE(judge.state().compare(), std::nullopt);
}

TEST_F(JudgedProgram, IsWrongWhenASettingChangesByItself) {
  program.store().update([](AppState& state) { state.settings.autoSaveMinutes = 5; });
  moveSomething();
  EXPECT_TRUE(finds("the settings in the file"));
}

TEST_F(JudgedProgram, IsWrongWhenAGroupIsSavedInAnotherOrder) {
  judge.happened();
  judge.state().grouped("Work", {{std::string("/a")}, {std::string("/b")}});
  program.store().update([](AppState& state) { state.groups["Work"] = {"/b", "/a"}; });
  rest();
  EXPECT_TRUE(finds("the groups in the file"));
}

TEST_F(JudgedProgram, IsWrongWhenTheFileOfATabIsNotAmongTheRecentFiles) {
  blinkers.seen = [](std::string_view name, Truth truth) { return name == "AXDocument" ? Truth() : truth; };
  for (auto& each : editor().windowsFrontToBack()) each.setDocument("file:///Users/ann/" + each.title());
  moveSomething();
  EXPECT_TRUE(finds("is not among the recent files"));
}

TEST_F(JudgedProgram, MayHaveTheOldAndTheNewStateWhereItWasKilled) {
  const auto tag = [this](const std::string& color) {
    judge.state().tagged({"title:Plan"}, color);
    judge.state().wasKilled();
  };
  tag("red");
  EXPECT_EQ(judge.state().compare(), std::nullopt);
  tag("red");
  program.store().update([](AppState& state) { state.tags["title:Plan"] = "red"; });
  EXPECT_EQ(judge.state().compare(), std::nullopt);
  tag("blue");
  program.store().update([](AppState& state) { state.tags.clear(); });
  EXPECT_NE(judge.state().compare(), std::nullopt);
}

}  // namespace
}  // namespace pellar
