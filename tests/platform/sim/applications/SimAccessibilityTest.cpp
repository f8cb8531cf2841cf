#include <gtest/gtest.h>

#include <array>
#include <chrono>

#include "platform/sim/SimMac.h"
#include "platform/sim/applications/SimAccessibility.h"
#include "platform/sim/faults/FaultyAccessibility.h"
#include "platform/sim/faults/FaultyWorkspace.h"

namespace pellar {

using std::chrono::milliseconds;
using std::chrono::seconds;

class SimAccessibilityTest : public ::testing::Test {
 protected:
  template <class T>
  std::optional<T> read(const Element& element, std::string_view name) {
    const auto value = mac.accessibility().attribute(element, name);
    const T* const typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed == nullptr ? std::nullopt : std::optional<T>(*typed);
  }
  AxRect frame(const SimWindow& window) {
    return AxRect::of(*read<AxPoint>(window.element(), "AXPosition"),
                      *read<Size>(window.element(), "AXSize"));
  }
  void write(const SimWindow& window, const AxRect& rect) {
    mac.accessibility().set(window.element(), "AXPosition", rect.origin());
    mac.accessibility().set(window.element(), "AXSize", rect.size());
  }

  SimMac mac;
  SimApplication editor = mac.launch({.bundleId = "com.example.editor", .name = "Editor"});
  SimWindow report = editor.open("Report", {100, 200, 900, 600});
};

TEST_F(SimAccessibilityTest, CountsEveryReadWriteAndActionAsARoundTrip) {
  auto& accessibility = mac.accessibility();
  read<std::string>(report.element(), "AXTitle");
  read<std::string>(report.element(), "AXTitle");
  accessibility.set(report.element(), "AXPosition", AxPoint{1, 2});
  accessibility.perform(report.element(), "AXRaise");
  EXPECT_EQ(accessibility.roundTrips(), (RoundTrips{2, 1, 1, 0, 0}));
  EXPECT_EQ(accessibility.roundTrips().total(), 4);
}

TEST_F(SimAccessibilityTest, ReadsWhatWasFetchedTogetherForOneRoundTripAnElement) {
  const SimWindow plan = editor.open("Plan");
  const std::array elements{report.element(), plan.element()};
  constexpr std::array<std::string_view, 2> names{"AXTitle", "AXDocument"};
  mac.accessibility().willRead(elements, names);
  EXPECT_EQ(read<std::string>(report.element(), "AXTitle"), "Report");
  EXPECT_EQ(read<std::string>(plan.element(), "AXTitle"), "Plan");
  EXPECT_EQ(read<std::string>(plan.element(), "AXDocument"), std::nullopt) << "absence is fetched as well";
  EXPECT_EQ(mac.accessibility().roundTrips().batches, 2);
  EXPECT_EQ(mac.accessibility().roundTrips().reads, 0);
  read<AxPoint>(report.element(), "AXPosition");
  EXPECT_EQ(mac.accessibility().roundTrips().reads, 1) << "what was not announced";
}

TEST_F(SimAccessibilityTest, ForgetsWhatWasFetchedOnTheNextTurnAndAfterAnyWrite) {
  const std::array elements{report.element()};
  constexpr std::array<std::string_view, 1> names{"AXTitle"};
  mac.settle();
  mac.accessibility().willRead(elements, names);
  mac.mainLoop().post([] {});
  mac.settle();
  read<std::string>(report.element(), "AXTitle");
  EXPECT_EQ(mac.accessibility().roundTrips().reads, 1);
  mac.accessibility().willRead(elements, names);
  mac.accessibility().set(report.element(), "AXMain", false);
  read<std::string>(report.element(), "AXTitle");
  EXPECT_EQ(mac.accessibility().roundTrips().reads, 2) << "also a write that changes nothing";
  mac.accessibility().willRead(elements, names);
  mac.accessibility().perform(report.element(), "AXNoSuchAction");
  read<std::string>(report.element(), "AXTitle");
  EXPECT_EQ(mac.accessibility().roundTrips().reads, 3);
}

TEST_F(SimAccessibilityTest, TakesTheTimeThatASlowApplicationNeeds) {
  editor.quirks().answerTime = milliseconds(40);
  read<std::string>(report.element(), "AXTitle");
  read<std::string>(report.element(), "AXSubrole");
  EXPECT_EQ(mac.mainLoop().uptime(), milliseconds(80));
}

TEST_F(SimAccessibilityTest, WaitsInVainForAFrozenApplicationAndHearsFromItLater) {
  mac.settle();
  int heard = 0;
  const auto observer = mac.accessibility().observe(editor.pid(), [&heard] { ++heard; });
  observer->add(mac.accessibility().applicationElement(editor.pid()), "AXTitleChanged");
  editor.freeze();
  report.retitle("Report 2");
  mac.settle();
  EXPECT_EQ(read<std::string>(report.element(), "AXTitle"), std::nullopt);
  EXPECT_EQ(mac.mainLoop().uptime(), seconds(6));
  EXPECT_EQ(heard, 0);
  editor.resume();
  mac.settle();
  EXPECT_EQ(read<std::string>(report.element(), "AXTitle"), "Report 2");
  EXPECT_EQ(heard, 1);
}

TEST_F(SimAccessibilityTest, RefusesAndMistypesAttributesAsToldTo) {
  report.quirks().refusedAttributes.insert("AXSize");
  report.quirks().mistypedAttributes.insert("AXTitle");
  EXPECT_FALSE(mac.accessibility().attribute(report.element(), "AXSize").has_value());
  ASSERT_TRUE(mac.accessibility().attribute(report.element(), "AXTitle").has_value());
  EXPECT_EQ(read<std::string>(report.element(), "AXTitle"), std::nullopt);
}

TEST_F(SimAccessibilityTest, ClampsFramesToWhatAWindowTakes) {
  report.quirks().minimumSize = {300, 200};
  report.quirks().maximumSize = {1000, 800};
  report.quirks().sizeIncrement = {7, 13};
  write(report, {50, 60, 10, 5000});
  EXPECT_EQ(frame(report), (AxRect{50, 60, 300, 798}));
  report.quirks().confinedTo = AxRect{0, 25, 1440, 875};
  write(report, {50, -40, 300, 200});
  EXPECT_EQ(frame(report).origin(), (AxPoint{50, 25}));
  report.quirks().refusesMoves = true;
  report.quirks().refusesSizes = true;
  write(report, {500, 500, 500, 500});
  EXPECT_EQ(frame(report), (AxRect{50, 25, 300, 200}));
}

TEST_F(SimAccessibilityTest, ChangesAFrameLateWhenTheWindowDoes) {
  report.quirks().frameDelay = milliseconds(120);
  write(report, {50, 60, 700, 500});
  EXPECT_EQ(frame(report), (AxRect{100, 200, 900, 600}));
  mac.advance(milliseconds(120));
  EXPECT_EQ(frame(report), (AxRect{50, 60, 700, 500}));
}

TEST_F(SimAccessibilityTest, NamesAWindowTwiceOrAfterItsEndWhenTheApplicationDoes) {
  const SimWindow plan = editor.open("Plan");
  const Element application = mac.accessibility().applicationElement(editor.pid());
  report.quirks().listedTwice = true;
  EXPECT_EQ(read<std::vector<Element>>(application, "AXWindows")->size(), 3U);
  report.vanishUnannounced();
  EXPECT_EQ(read<std::vector<Element>>(application, "AXWindows")->size(), 3U);
  EXPECT_EQ(read<std::string>(report.element(), "AXTitle"), std::nullopt);
}

TEST_F(SimAccessibilityTest, ListsWindowsFrontToBackOrByCreation) {
  const SimWindow plan = editor.open("Plan");
  const Element application = mac.accessibility().applicationElement(editor.pid());
  EXPECT_EQ(read<std::vector<Element>>(application, "AXWindows")->front(), plan.element());
  editor.quirks().listsWindowsByCreation = true;
  EXPECT_EQ(read<std::vector<Element>>(application, "AXWindows")->front(), report.element());
}

TEST_F(SimAccessibilityTest, GivesNothingWithoutThePermissionAndCountsThePrompts) {
  mac.accessibility().setTrusted(false);
  EXPECT_FALSE(mac.accessibility().isTrustedPromptingUser());
  EXPECT_EQ(mac.accessibility().prompts(), 1);
  EXPECT_FALSE(mac.accessibility().attribute(report.element(), "AXTitle").has_value());
  EXPECT_EQ(mac.accessibility().observe(editor.pid(), [] {}), nullptr);
  EXPECT_EQ(mac.accessibility().roundTrips().total(), 0);
}

TEST_F(SimAccessibilityTest, HasNoObserverForAnApplicationStillLaunching) {
  editor.quirks().refuses = SimRefusal::observers;
  EXPECT_EQ(mac.accessibility().observe(editor.pid(), [] {}), nullptr);
  editor.quirks().refuses = SimRefusal::nothing;
  const auto observer = mac.accessibility().observe(editor.pid(), [] {});
  EXPECT_NE(observer, nullptr);
  EXPECT_EQ(mac.accessibility().liveObservers(), 1);
}

TEST_F(SimAccessibilityTest, BreaksThroughAWrapperWhatTheWindowItselfWouldAnswer) {
  FaultyAccessibility faulty(mac.accessibility());
  faulty.refuse(report.element(), "AXTitle");
  faulty.answer("AXSubrole", true);
  EXPECT_FALSE(faulty.attribute(report.element(), "AXTitle").has_value());
  EXPECT_TRUE(std::holds_alternative<bool>(*faulty.attribute(report.element(), "AXSubrole")));
  faulty.refuseObservers(true);
  EXPECT_EQ(faulty.observe(editor.pid(), [] {}), nullptr);
  EXPECT_EQ(faulty.refusedObservers(), 1);
  faulty.repair();
  EXPECT_TRUE(faulty.attribute(report.element(), "AXTitle").has_value());
  faulty.beforeRead([this](const Element&, std::string_view name) {
    if (name == "AXSize") report.close();
  });
  EXPECT_TRUE(faulty.attribute(report.element(), "AXPosition").has_value());
  EXPECT_FALSE(faulty.attribute(report.element(), "AXSize").has_value());
}

TEST_F(SimAccessibilityTest, WithholdsThroughAWrapperWhoEnded) {
  FaultyWorkspace faulty(mac.workspace());
  faulty.withholdsTerminatedPid = true;
  std::optional<ProcessId> ended = 1;
  const auto subscription = faulty.onTerminated([&ended](std::optional<ProcessId> pid) { ended = pid; });
  mac.terminate(editor);
  mac.settle();
  EXPECT_EQ(ended, std::nullopt);
}

}  // namespace pellar
