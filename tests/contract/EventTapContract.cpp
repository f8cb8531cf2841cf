#include "platform/EventTap.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

// Control and Tab, and neither Option nor Command.
constexpr KeyCombination wanted{48, KeyFlags::control | KeyFlags::option | KeyFlags::command,
                                KeyFlags::control};

class EventTapContract : public ContractTest {
 protected:
  EventTapContract()
      : pid(world().launch("editor")), window(world().open(pid, "Plan.txt", {60, 100, 500, 300})) {
    elementOf(pid, "Plan.txt");
    if (!wait([this] { return isInFront(pid); })) throw std::runtime_error("nothing comes to the front");
  }

  // Writes down the presses of the combination and answers them all alike.
  std::unique_ptr<EventTap> tapThat(bool swallows) {
    return world().platform().eventTaps.tapKeyDowns(wanted, [this, swallows](const TapEvent& event) {
      if (!wanted.matches(event)) return false;
      seen.push_back(event);
      return swallows;
    });
  }
  bool received(int count) {
    return wait([&] { return world().tabsReceived(window) == count; });
  }

  ProcessId pid;
  WorldWindow window;
  std::vector<TapEvent> seen;
};

TEST_F(EventTapContract, ASwallowedKeyReachesNoApplication) {
  const auto tap = tapThat(true);
  ASSERT_NE(tap, nullptr);
  world().pressTab({.control = true});
  world().pressTab({.shift = true, .control = true});
  ASSERT_TRUE(wait([this] { return seen.size() == 2; }));
  EXPECT_EQ(seen[0].flags & (KeyFlags::control | KeyFlags::shift), KeyFlags::control);
  EXPECT_EQ(seen[1].flags & (KeyFlags::control | KeyFlags::shift), KeyFlags::control | KeyFlags::shift);
  letPass(std::chrono::milliseconds(200));
  EXPECT_EQ(world().tabsReceived(window), 0);
}

TEST_F(EventTapContract, AKeyThatIsNotSwallowedReachesItsApplicationOnce) {
  const auto tap = tapThat(false);
  ASSERT_NE(tap, nullptr);
  world().pressTab({.control = true});
  EXPECT_TRUE(received(1));
  ASSERT_TRUE(wait([this] { return seen.size() == 1; }));
  world().pressTab({.control = true});
  EXPECT_TRUE(received(2));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(world().tabsReceived(window), 2);
}

TEST_F(EventTapContract, OtherCombinationsReachTheirApplication) {
  const auto tap = tapThat(true);
  ASSERT_NE(tap, nullptr);
  world().pressTab({});
  EXPECT_TRUE(received(1));
  world().pressTab({.shift = true});
  EXPECT_TRUE(received(2));
  world().pressTab({.control = true, .command = true});
  EXPECT_TRUE(received(3));
  EXPECT_TRUE(seen.empty());
}

TEST_F(EventTapContract, ADroppedTapSeesNothingMore) {
  auto tap = tapThat(true);
  ASSERT_NE(tap, nullptr);
  world().pressTab({.control = true});
  ASSERT_TRUE(wait([this] { return seen.size() == 1; }));
  tap.reset();
  world().pressTab({.control = true});
  EXPECT_TRUE(received(1));
  EXPECT_EQ(seen.size(), 1U);
}

TEST_F(EventTapContract, AHandlerMayDropItsTap) {
  std::unique_ptr<EventTap> tap;
  int calls = 0;
  tap = world().platform().eventTaps.tapKeyDowns(wanted, [&](const TapEvent&) {
    ++calls;
    tap.reset();
    return false;
  });
  ASSERT_NE(tap, nullptr);
  world().pressTab({.control = true});
  EXPECT_TRUE(received(1));
  world().pressTab({.control = true});
  EXPECT_TRUE(received(2));
  EXPECT_EQ(calls, 1);
}

TEST_F(EventTapContract, ATapListensFromTheStart) {
  const auto tap = tapThat(true);
  ASSERT_NE(tap, nullptr);
  tap->setListening(true);
  world().pressTab({.control = true});
  EXPECT_TRUE(wait([this] { return seen.size() == 1; }));
}

TEST_F(EventTapContract, ATapAtRestLetsEveryKeyPass) {
  const auto tap = tapThat(true);
  ASSERT_NE(tap, nullptr);
  tap->setListening(false);
  world().pressTab({.control = true});
  EXPECT_TRUE(received(1));
  EXPECT_TRUE(seen.empty());
  tap->setListening(true);
  world().pressTab({.control = true});
  ASSERT_TRUE(wait([this] { return seen.size() == 1; }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(world().tabsReceived(window), 1);
}

}  // namespace pellar::contract
