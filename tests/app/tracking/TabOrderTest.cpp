#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "app/tracking/TabOrder.h"
#include "platform/sim/applications/SimAccessibility.h"
#include "platform/sim/applications/SimDesktop.h"

namespace pellar {
namespace {

// Windows named by letters, on a simulated desktop.
class TabOrderTest : public testing::Test {
 protected:
  TabOrderTest() {
    const auto editor = desktop.launch("org.example.editor", "Editor", ActivationPolicy::regular);
    for (char name = 'a'; name <= 'h'; ++name) {
      const auto window = desktop.open(*editor, {name}, {0, 100, 400, 300}, "AXStandardWindow");
      all.push_back(std::make_shared<OfficeWindow>(accessibility, SimElement::ofWindow(window),
                                                   TrackedApp{"org.example.editor", "Editor", std::nullopt},
                                                   editor->description.pid));
    }
  }
  [[nodiscard]] WindowList of(const std::string& names) const {
    WindowList windows;
    for (const char name : names) windows.push_back(all.at(static_cast<std::size_t>(name - 'a')));
    return windows;
  }
  [[nodiscard]] static std::string names(const WindowList& windows) {
    std::string names;
    for (const auto& window : windows) names += window->title;
    return names;
  }
  void move(char name, std::string among, std::ptrdiff_t index) {
    static_cast<void>(order.move(of({name}).front(), of(among), index));
  }

  SimMainLoop loop;
  SimDesktop desktop{loop};
  SimAccessibility accessibility{desktop, loop};
  WindowList all;
  TabOrder order;
};

TEST_F(TabOrderTest, NewWindowsJoinAtTheEndInTheOrderGiven) {
  EXPECT_EQ(names(order.arrange(of("ba"))), "ba");
  EXPECT_EQ(names(order.arrange(of("dcab"))), "badc");
}

TEST_F(TabOrderTest, AWindowThatIsAwayKeepsItsPlaceUntilItIsForgotten) {
  static_cast<void>(order.arrange(of("abc")));
  EXPECT_EQ(names(order.arrange(of("ca"))), "ac");
  EXPECT_EQ(names(order.arrange(of("bca"))), "abc");
  order.forget(of("b").front());
  EXPECT_EQ(names(order.arrange(of("bca"))), "acb");
}

TEST_F(TabOrderTest, AMovedWindowStandsBesideItsNewNeighbour) {
  static_cast<void>(order.arrange(of("abdc")));
  static_cast<void>(order.arrange(of("abc")));  // d is away
  EXPECT_EQ(names(order.move(of("a").front(), of("bc"), 1)), "bac");
  EXPECT_EQ(names(order.arrange(of("abcd"))), "bdac");
  EXPECT_EQ(names(order.move(of("b").front(), of("ac"), 2)), "acb");
  EXPECT_EQ(names(order.arrange(of("abcd"))), "dacb");
}

TEST_F(TabOrderTest, AWindowMovedToTheEndStandsBesideTheLastOneNotBehindThoseThatAreAway) {
  static_cast<void>(order.arrange(of("abcd")));
  static_cast<void>(order.arrange(of("abc")));  // d is away
  EXPECT_EQ(names(order.move(of("a").front(), of("bc"), 2)), "bca");
  EXPECT_EQ(names(order.arrange(of("abcd"))), "bcad");
}

TEST_F(TabOrderTest, TheOnlyWindowMayBeMoved) {
  static_cast<void>(order.arrange(of("a")));
  EXPECT_EQ(names(order.move(of("a").front(), {}, 0)), "a");
  EXPECT_EQ(names(order.arrange(of("a"))), "a");
}

// Whatever comes, goes and is moved: nothing is doubled or lost, and windows that stay keep their order.
RC_GTEST_FIXTURE_PROP(TabOrderTest, StaysAnOrder, ()) {
  std::string shown;
  const int steps = *rc::gen::inRange(1, 30);
  for (int step = 0; step < steps; ++step) {
    const auto wanted = *rc::gen::container<std::vector<bool>>(8, rc::gen::arbitrary<bool>());
    std::string given;
    for (char name = 'a'; name <= 'h'; ++name)
      if (wanted[static_cast<std::size_t>(name - 'a')]) given += name;
    const std::string before = shown;
    shown = names(order.arrange(of(given)));
    std::string sorted = shown;
    std::ranges::sort(sorted);
    RC_ASSERT(sorted == given);
    std::string stayed;
    for (const char name : before)
      if (shown.find(name) != std::string::npos) stayed += name;
    std::string kept;
    for (const char name : shown)
      if (before.find(name) != std::string::npos) kept += name;
    RC_ASSERT(kept == stayed);
    if (shown.empty()) continue;
    const auto from = *rc::gen::inRange<std::size_t>(0, shown.size());
    const auto to = *rc::gen::inRange<std::size_t>(0, shown.size());
    std::string others = shown;
    others.erase(from, 1);
    std::string expected = others;
    expected.insert(to, 1, shown[from]);
    RC_ASSERT(names(order.move(of({shown[from]}).front(), of(others), static_cast<std::ptrdiff_t>(to))) ==
              expected);
    shown = names(order.arrange(of(given)));
    RC_ASSERT(shown == expected);
  }
}

}  // namespace
}  // namespace pellar
