// Who has the keyboard, and when reports are heard, around the program's own windows, menus and questions.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "platform/sim/panel/SimPanel.h"
#include "tests/contract/RecordingView.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using Titles = std::vector<std::string>;

class SimKeyboardPlace : public testing::Test {
 protected:
  std::unique_ptr<PlainWindow> show(const std::string& title) {
    auto window = mac.windows().makeWindow({.title = title, .contentSize = {200, 100}, .elements = {}});
    mac.workspace().activateIgnoringOtherApps();
    window->makeKeyAndOrderFront();
    mac.settle();
    return window;
  }
  void expectPellarInFront(bool expected) {
    EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId == mac.workspace().ownBundleId(), expected);
  }
  static TextAlertAnswer ok() { return {TextAlertAnswer::firstButtonReturn, ""}; }

  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "com.example.editor", .name = "Editor"});
  SimWindow plan = editor.open("Plan");
};

TEST_F(SimKeyboardPlace, StaysNobodysAfterTheLastWindowOfTheProgram) {
  const auto first = show("First");
  const auto second = show("Second");
  EXPECT_EQ(mac.windows().key(), second.get());
  mac.windows().titled("Second").clickClose();
  EXPECT_EQ(mac.windows().key(), first.get()) << "the next one gets it";
  first->close();
  mac.advance(1h);
  EXPECT_EQ(mac.windows().key(), nullptr);
  expectPellarInFront(true);
  mac.type("x");
  EXPECT_EQ(editor.typed(), "");
  mac.click(plan);
  mac.type("x");
  EXPECT_EQ(editor.typed(), "x");
}

TEST_F(SimKeyboardPlace, IsNotTakenWithinTheTurnThatAsksForIt) {
  mac.workspace().activateIgnoringOtherApps();
  expectPellarInFront(false);
  mac.settle();
  expectPellarInFront(true);
  mac.workspace().activationTime = 100ms;
  mac.workspace().activate(editor.pid());
  mac.advance(99ms);
  expectPellarInFront(true);
  mac.advance(1ms);
  expectPellarInFront(false);
}

TEST_F(SimKeyboardPlace, IsAQuestionsAndThenNobodys) {
  const auto panel = mac.panels().makePanel({.contentSize = {100, 32}, .canBecomeKey = true});
  contract::RecordingView view;
  panel->setView(&view);
  panel->makeKeyAndOrderFront();
  mac.alerts().next([&](const TextAlert&) {
    EXPECT_FALSE(panel->isKey());
    mac.pointer().click({10, 10});
    return ok();
  });
  static_cast<void>(mac.alerts().runModal({}));
  mac.settle();
  EXPECT_FALSE(view.heard("down")) << "a question holds up the other windows of its program";
  expectPellarInFront(true);
  mac.type("x");
  EXPECT_EQ(editor.typed(), "");
  mac.pointer().click({10, 10});
  EXPECT_TRUE(view.heard("down"));
  panel->setView(nullptr);
}

TEST_F(SimKeyboardPlace, HidingTheOthersHidesWindowsOfTheProgramButNoPanel) {
  const auto viewer = mac.launch({.bundleId = "com.example.viewer", .name = "Viewer", .inFront = false});
  auto photo = SimApplication(viewer).open("Photo", {0, 100, 1440, 700});
  const auto panel = mac.panels().makePanel({.contentSize = {100, 32}});
  panel->orderFrontRegardless();
  const auto about = show("About");
  mac.activate(editor);
  mac.settle();
  mac.hideOthers(editor);
  EXPECT_TRUE(panel->isVisible());
  EXPECT_FALSE(about->isVisible());
  EXPECT_EQ(mac.frontWindow(), plan);
  mac.workspace().activateIgnoringOtherApps();
  mac.settle();
  EXPECT_TRUE(about->isVisible());
}

class SimReports : public SimKeyboardPlace {
 protected:
  SimReports() {
    observer = mac.accessibility().observe(editor.pid(), [this] { heard.emplace_back("report"); });
    observer->add(mac.accessibility().applicationElement(editor.pid()), "AXTitleChanged");
    mac.settle();
  }
  // While it is open the window's title changes, a block is posted and time passes.
  void happenings() {
    plan.retitle("Plan " + std::to_string(++titles));
    mac.mainLoop().post([this] { heard.emplace_back("block"); });
    const auto timer = mac.mainLoop().after(1s, [this] { heard.emplace_back("timer"); });
    mac.advance(2s);
  }

  std::unique_ptr<ElementObserver> observer;
  Titles heard;
  int titles = 0;
};

TEST_F(SimReports, WaitForTheHandlerOfTheItemThatIsChosenInAMenu) {
  mac.menus().next([this](SimOpenMenu& menu) {
    happenings();
    menu.choose({"Close"});
  });
  mac.menus().popUpContextMenu({ClosureItem{"Close", [this] { heard.emplace_back("handler"); }}}, {});
  mac.settle();
  EXPECT_EQ(heard, (Titles{"block", "timer", "handler", "report"}));
}

TEST_F(SimReports, WaitForTheHandlerOfTheItemThatIsChosenInTheMenuBar) {
  const auto item = mac.statusBar().addItem({.imageName = "", .imageHeight = 16, .title = "P"}, [this] {
    return Menu{ClosureItem{"Quit", [this] { heard.emplace_back("handler"); }}};
  });
  mac.statusBar().open([this](SimOpenMenu& menu) {
    happenings();
    menu.choose({"Quit"});
  });
  EXPECT_EQ(heard, (Titles{"block", "timer", "handler", "report"}));
}

TEST_F(SimReports, WaitUntilAQuestionIsAnswered) {
  mac.alerts().next([this](const TextAlert&) {
    happenings();
    return ok();
  });
  static_cast<void>(mac.alerts().runModal({}));
  heard.emplace_back("answered");
  mac.settle();
  EXPECT_EQ(heard, (Titles{"block", "timer", "answered", "report"}));
}

}  // namespace
}  // namespace pellar
