#include <gtest/gtest.h>

#include "app/strip/documents/Prompt.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

class Question : public testing::Test {
 protected:
  std::optional<std::string> ask(const std::string& defaultValue = "Plan") {
    return Prompt::ask(mac.alerts(), *place, "Rename file", "New name for Plan:", defaultValue);
  }
  std::optional<std::string> answered(const std::string& text) {
    mac.alerts().nextType(text);
    return ask();
  }

  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::shared_ptr<PlaceInFront> place = PlaceInFront::create(mac.workspace());  // depends-on: mac
};

TEST_F(Question, ShowsItsWordsOverAFieldWithTheTextToTypeOver) {
  mac.alerts().nextCancel();
  static_cast<void>(ask("Plan 2"));
  const TextAlert& shown = mac.alerts().shown().front();
  EXPECT_EQ(shown.messageText, "Rename file");
  EXPECT_EQ(shown.informativeText, "New name for Plan:");
  EXPECT_EQ(shown.buttons, (std::vector<std::string>{"OK", "Cancel"}));
  EXPECT_EQ(shown.fieldSize, (Size{260, 24}));
  EXPECT_EQ(shown.fieldText, "Plan 2");
}

TEST_F(Question, GivesTheTextWithoutTheBlanksAroundIt) {
  EXPECT_EQ(answered("Budget"), "Budget");
  EXPECT_EQ(answered("\t Budget 2024 \u00A0"), "Budget 2024");
  EXPECT_EQ(answered("\nBudget\n"), "\nBudget\n");
  EXPECT_EQ(answered("bad \xFF byte "), "bad \uFFFD byte");
}

TEST_F(Question, NothingTypedIsNoAnswer) {
  EXPECT_EQ(answered(""), std::nullopt);
  EXPECT_EQ(answered(" \t\u00A0 "), std::nullopt);
}

TEST_F(Question, AnyButtonButTheFirstIsNoAnswer) {
  mac.alerts().nextCancel("Budget");
  EXPECT_EQ(ask(), std::nullopt);
  mac.alerts().next([](const TextAlert&) { return TextAlertAnswer{0, "Budget"}; });
  EXPECT_EQ(ask(), std::nullopt);
}

TEST_F(Question, ComesInFrontAndGivesThePlaceBack) {
  mac.alerts().next([&](const TextAlert& alert) {
    EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, alert.fieldText};
  });
  EXPECT_EQ(ask(), "Plan");
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(Question, LeavesTheApplicationInFrontThatTheUserWentTo) {
  const auto viewer = mac.launch({.bundleId = "org.example.viewer", .name = "Viewer", .inFront = false});
  mac.alerts().next([&](const TextAlert&) {
    mac.activate(viewer);
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "Budget"};
  });
  EXPECT_EQ(ask(), "Budget");
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, viewer.pid());
}

TEST_F(Question, KeepsTheKeyboardWhenAWindowOfOursClosesUnderIt) {
  mac.alerts().next([&](const TextAlert&) {
    place->giveBack();
    mac.settle();
    EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "Budget"};
  });
  EXPECT_EQ(ask(), "Budget");
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(Question, AskedOverAWindowOfOursLeavesItTheKeyboard) {
  place->take();
  mac.settle();
  EXPECT_EQ(answered("Budget"), "Budget");
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->bundleId, mac.workspace().ownBundleId());
  place->giveBack();
  mac.settle();
  EXPECT_EQ(mac.workspace().frontmostApplication()->pid, editor.pid());
}

TEST_F(Question, IsNotAskedWhileAnotherOneIs) {
  mac.alerts().next([&](const TextAlert&) {
    EXPECT_EQ(ask(), std::nullopt);
    return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, "first"};
  });
  EXPECT_EQ(ask(), "first");
  EXPECT_EQ(mac.alerts().shown().size(), 1U);
}

}  // namespace
}  // namespace pellar
