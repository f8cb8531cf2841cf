#include <algorithm>
#include <limits>
#include <vector>

#include "tests/contract/ContractTest.h"

namespace pellar::contract {

namespace {

constexpr AxRect left{60, 160, 400, 300};
constexpr AxRect right{520, 160, 400, 300};

}  // namespace

class WorkspaceContract : public ContractTest {
 protected:
  WorkspaceContract()
      : editor(world().launch("editor")),
        terminal(world().launch("terminal")),
        report(world().open(editor, "Report.txt", left)) {
    elementOf(editor, "Report.txt");
    shell = world().open(terminal, "Shell", right);
    elementOf(terminal, "Shell");
    if (!wait([this] { return isInFront(terminal); })) throw std::runtime_error("nothing comes to the front");
  }

  ProcessId editor;
  ProcessId terminal;
  WorldWindow report;
  WorldWindow shell{};
};

TEST_F(WorkspaceContract, NamesTheApplicationInFront) {
  const auto front = workspace().frontmostApplication();
  ASSERT_TRUE(front.has_value());
  EXPECT_EQ(front->pid, terminal);
  EXPECT_EQ(front->policy, ActivationPolicy::regular);
  ASSERT_TRUE(front->bundleId.has_value());
  EXPECT_FALSE(front->bundleId->empty());
  EXPECT_NE(front->bundleId, workspace().ownBundleId());
}

TEST_F(WorkspaceContract, GivesDifferentApplicationsDifferentIdentifiers) {
  const auto before = workspace().frontmostApplication()->bundleId;
  world().focus(report);
  ASSERT_TRUE(wait([this] { return isInFront(editor); }));
  EXPECT_NE(workspace().frontmostApplication()->bundleId, before);
}

TEST_F(WorkspaceContract, TellsThatTheUserWentToAnotherApplication) {
  int told = 0;
  bool namedInCallback = false;
  const auto subscription = workspace().onActivated([&] {
    ++told;
    namedInCallback = isInFront(editor);
  });
  EXPECT_EQ(told, 0);
  world().focus(report);
  EXPECT_TRUE(wait([&told] { return told > 0; }));
  EXPECT_TRUE(wait([&namedInCallback] { return namedInCallback; }));
}

TEST_F(WorkspaceContract, BringsAnApplicationToTheFront) {
  workspace().activate(editor);
  EXPECT_TRUE(wait([this] { return isInFront(editor); }));
}

TEST_F(WorkspaceContract, TellsNothingWhenTheApplicationInFrontIsActivated) {
  letPass(std::chrono::milliseconds(150));
  int told = 0;
  const auto subscription = workspace().onActivated([&told] { ++told; });
  workspace().activate(terminal);
  letPass(std::chrono::milliseconds(150));
  EXPECT_EQ(told, 0);
  EXPECT_TRUE(isInFront(terminal));
}

TEST_F(WorkspaceContract, IgnoresTheActivationOfAProcessThatDoesNotExist) {
  workspace().activate(std::numeric_limits<ProcessId>::max());
  letPass(std::chrono::milliseconds(100));
  EXPECT_TRUE(isInFront(terminal));
}

TEST_F(WorkspaceContract, TellsWhichApplicationEnded) {
  std::vector<std::optional<ProcessId>> ended;
  const auto subscription =
      workspace().onTerminated([&ended](std::optional<ProcessId> pid) { ended.push_back(pid); });
  world().terminate(terminal);
  ASSERT_TRUE(wait([&ended] { return !ended.empty(); }));
  EXPECT_EQ(ended.front().value_or(terminal), terminal);
  EXPECT_TRUE(wait([this] { return !isInFront(terminal); }));
}

TEST_F(WorkspaceContract, IsSilentToWhoeverUnsubscribedAlsoInsideTheCallback) {
  int once = 0;
  int never = 0;
  int always = 0;
  Subscription self;
  self = workspace().onActivated([&] {
    ++once;
    self.cancel();
  });
  auto dropped = workspace().onActivated([&never] { ++never; });
  const auto kept = workspace().onActivated([&always] { ++always; });
  dropped.cancel();
  world().focus(report);
  ASSERT_TRUE(wait([&always] { return always > 0; }));
  const int before = always;
  world().focus(shell);
  ASSERT_TRUE(wait([&] { return always > before; }));
  EXPECT_EQ(once, 1);
  EXPECT_EQ(never, 0);
}

TEST_F(WorkspaceContract, DoesNotCallASubscriberThatAnotherDroppedInTheSameReport) {
  letPass(std::chrono::milliseconds(150));
  int told = 0;
  Subscription first;
  Subscription second;
  first = workspace().onActivated([&] {
    ++told;
    second.cancel();
  });
  second = workspace().onActivated([&] {
    ++told;
    first.cancel();
  });
  int always = 0;
  const auto kept = workspace().onActivated([&always] { ++always; });
  world().focus(report);
  ASSERT_TRUE(wait([&] { return always > 0 && isInFront(editor); }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(told, always) << "one of the two hears each report, the other none";
}

TEST_F(WorkspaceContract, LetsATerminationCallbackUnsubscribeItself) {
  int told = 0;
  Subscription self;
  self = workspace().onTerminated([&](std::optional<ProcessId>) {
    ++told;
    self.cancel();
  });
  int kept = 0;
  const auto other = workspace().onTerminated([&kept](std::optional<ProcessId>) { ++kept; });
  world().terminate(terminal);
  ASSERT_TRUE(wait([&kept] { return kept == 1; }));
  world().terminate(editor);
  ASSERT_TRUE(wait([&kept] { return kept == 2; }));
  EXPECT_EQ(told, 1);
}

TEST_F(WorkspaceContract, TellsWhichApplicationHasLaunched) {
  std::vector<ProcessId> told;
  const auto subscription = workspace().onLaunched([&told](ProcessId pid) { told.push_back(pid); });
  const ProcessId viewer = world().launch("viewer");
  world().open(viewer, "Picture", left);
  elementOf(viewer, "Picture");
  EXPECT_TRUE(wait([&] { return std::ranges::count(told, viewer) == 1; }));
}

TEST_F(WorkspaceContract, ASpaceIsNotChangedByWhatWindowsDo) {
  int told = 0;
  const auto subscription = workspace().onActiveSpaceChanged([&told] { ++told; });
  world().focus(report);
  ASSERT_TRUE(wait([this] { return isInFront(editor); }));
  world().minimise(report);
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(told, 0);
}

}  // namespace pellar::contract
