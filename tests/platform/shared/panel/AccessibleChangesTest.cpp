#include <gtest/gtest.h>

#include "platform/shared/panel/AccessibleChanges.h"

namespace pellar {
namespace {

using Kind = AccessibleChange::Kind;
using Path = std::vector<std::string>;

AccessibleElement tab(const std::string& id, const std::string& name, bool selected = false) {
  return {.id = id, .role = AccessibleRole::tab, .name = name, .selected = selected};
}

AccessibleElement stripOf(std::vector<AccessibleElement> tabs) {
  AccessibleElement group{.id = "tabs", .children = std::move(tabs)};
  return {.id = "strip", .children = {group}};
}

// Each as its kind and the path to it.
std::vector<std::pair<Kind, Path>> told(const AccessibleElement& before, const AccessibleElement& now) {
  std::vector<std::pair<Kind, Path>> all;
  for (const AccessibleChange& change : accessibleChanges(before, now))
    all.emplace_back(change.kind, change.path);
  return all;
}
using Told = std::vector<std::pair<Kind, Path>>;

TEST(AccessibleChanges, NothingIsToldOfWhatStaysTheSame) {
  const auto strip = stripOf({tab("1", "Plan", true), tab("2", "Report")});
  EXPECT_EQ(told(strip, strip), Told{});
}

TEST(AccessibleChanges, NothingIsToldOfAPlace) {
  auto moved = stripOf({tab("1", "Plan")});
  moved.children[0].children[0].frame = {1, 2, 3, 4};
  EXPECT_EQ(told(stripOf({tab("1", "Plan")}), moved), Told{});
}

TEST(AccessibleChanges, AnotherTabComesToTheFront) {
  const auto before = stripOf({tab("1", "Plan", true), tab("2", "Report")});
  const auto now = stripOf({tab("1", "Plan"), tab("2", "Report", true)});
  EXPECT_EQ(told(before, now), (Told{{Kind::selected, {"tabs", "1"}}, {Kind::selected, {"tabs", "2"}}}));
  EXPECT_EQ(accessibleChanges(before, now)[1].element, tab("2", "Report", true));
}

TEST(AccessibleChanges, ATabIsRenamedAndAnotherComesAndAThirdGoes) {
  const auto before = stripOf({tab("1", "Plan"), tab("2", "Report")});
  const auto now = stripOf({tab("1", "Plan 2"), tab("3", "Notes")});
  EXPECT_EQ(
      told(before, now),
      (Told{{Kind::vanished, {"tabs", "2"}}, {Kind::appeared, {"tabs", "3"}}, {Kind::name, {"tabs", "1"}}}));
  EXPECT_EQ(accessibleChanges(before, now)[0].element.name, "Report");
}

TEST(AccessibleChanges, TabsThatChangePlacesGoAndComeAgain) {
  const auto before = stripOf({tab("1", "Plan"), tab("2", "Report")});
  const auto now = stripOf({tab("2", "Report"), tab("1", "Plan")});
  EXPECT_EQ(told(before, now), (Told{{Kind::vanished, {"tabs", "1"}},
                                     {Kind::vanished, {"tabs", "2"}},
                                     {Kind::appeared, {"tabs", "2"}},
                                     {Kind::appeared, {"tabs", "1"}}}));
}

TEST(AccessibleChanges, ATabThatGoesBetweenOthersDoesNotReorderThem) {
  const auto before = stripOf({tab("1", "Plan"), tab("2", "Report"), tab("3", "Notes")});
  const auto now = stripOf({tab("1", "Plan"), tab("3", "Notes")});
  EXPECT_EQ(told(before, now), (Told{{Kind::vanished, {"tabs", "2"}}}));
}

TEST(AccessibleChanges, AToolIsSwitchedAndSaysMore) {
  AccessibleElement before{.id = "tool", .checked = false};
  AccessibleElement now{.id = "tool", .help = "Saves every five minutes", .checked = true, .focused = true};
  EXPECT_EQ(told(before, now), (Told{{Kind::help, {}}, {Kind::checked, {}}, {Kind::focused, {}}}));
}

}  // namespace
}  // namespace pellar
