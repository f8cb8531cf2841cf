#include <array>
#include <limits>

#include "tests/contract/ContractTest.h"

namespace pellar::contract {

namespace {

constexpr AxRect frame{120, 160, 600, 400};
constexpr std::array<std::string_view, 8> windowAttributes{"AXTitle",    "AXSubrole",    "AXPosition",
                                                           "AXSize",     "AXMinimized",  "AXFullScreen",
                                                           "AXDocument", "AXCloseButton"};

}  // namespace

class AccessibilityContract : public ContractTest {};

TEST_F(AccessibilityContract, IsTrustedAndSaysSoAlsoWhenItMayPrompt) {
  EXPECT_TRUE(accessibility().isTrusted());
  EXPECT_TRUE(accessibility().isTrustedPromptingUser());
}

TEST_F(AccessibilityContract, ShowsAWindowAsItsApplicationOpenedIt) {
  const auto pid = world().launch("editor");
  world().open(pid, "Report.txt", frame);
  const Element window = elementOf(pid, "Report.txt");
  EXPECT_EQ(read<std::string>(window, "AXSubrole"), "AXStandardWindow");
  EXPECT_EQ(read<bool>(window, "AXMinimized"), false);
  EXPECT_EQ(read<bool>(window, "AXFullScreen").value_or(false), false);
  EXPECT_TRUE(wait([&] {
    const auto seen = frameOf(window);
    return seen && near(seen->x, frame.x) && near(seen->y, frame.y) && near(seen->width, frame.width) &&
           near(seen->height, frame.height);
  }));
}

TEST_F(AccessibilityContract, GivesAWindowOneHashAndEqualElementsHoweverItIsReached) {
  const auto pid = world().launch("editor");
  const auto opened = world().open(pid, "Plan.txt", frame);
  world().open(pid, "Other.txt", {200, 240, 500, 300});
  const Element first = elementOf(pid, "Plan.txt");
  const Element other = elementOf(pid, "Other.txt");
  world().focus(opened);
  ASSERT_TRUE(wait([&] { return isFocused(pid, first); }));
  const Element again = elementOf(pid, "Plan.txt");
  EXPECT_EQ(first, again);
  EXPECT_EQ(first.hash(), again.hash());
  EXPECT_FALSE(first == other);
  EXPECT_NE(first.hash(), other.hash());
  world().retitle(opened, "Renamed.txt");
  const Element renamed = elementOf(pid, "Renamed.txt");
  EXPECT_EQ(first, renamed);
  EXPECT_EQ(first.hash(), renamed.hash());
}

TEST_F(AccessibilityContract, GivesEqualApplicationElementsForOneProcess) {
  const auto pid = world().launch("editor");
  const auto element = accessibility().applicationElement(pid);
  EXPECT_EQ(element, accessibility().applicationElement(pid));
  EXPECT_EQ(element.hash(), accessibility().applicationElement(pid).hash());
}

TEST_F(AccessibilityContract, ReadsNothingFromAProcessThatDoesNotExist) {
  const Element nobody = accessibility().applicationElement(std::numeric_limits<ProcessId>::max());
  EXPECT_EQ(read<Element>(nobody, "AXFocusedWindow"), std::nullopt);
  EXPECT_TRUE(windowsOf(std::numeric_limits<ProcessId>::max()).empty());
  accessibility().set(nobody, "AXPosition", AxPoint{1, 1});
  EXPECT_NE(accessibility().perform(nobody, "AXRaise"), Performed::done);
}

TEST_F(AccessibilityContract, ReadsNothingUnderNamesThatDoNotExist) {
  const auto pid = world().launch("editor");
  world().open(pid, "Names.txt", frame);
  const Element window = elementOf(pid, "Names.txt");
  EXPECT_FALSE(accessibility().attribute(window, "AXNoSuchThing").has_value());
  EXPECT_FALSE(accessibility().attribute(window, "").has_value());
  EXPECT_FALSE(accessibility().attribute(window, "axtitle").has_value());
  EXPECT_FALSE(accessibility().attribute(window, "AXWindows").has_value());
  EXPECT_FALSE(accessibility().attribute(accessibility().applicationElement(pid), "AXPosition").has_value());
}

TEST_F(AccessibilityContract, ReadsNothingFromADestroyedWindow) {
  const auto pid = world().launch("editor");
  const auto opened = world().open(pid, "Gone.txt", frame);
  world().open(pid, "Stays.txt", {200, 240, 500, 300});
  const Element window = elementOf(pid, "Gone.txt");
  const Element closeButton = *read<Element>(window, "AXCloseButton");
  world().destroy(opened);
  ASSERT_TRUE(wait([&] { return !accessibility().attribute(window, "AXTitle").has_value(); }));
  for (const auto name : windowAttributes) {
    EXPECT_FALSE(accessibility().attribute(window, name).has_value()) << name;
  }
  EXPECT_FALSE(find(pid, "Gone.txt").has_value());
  accessibility().set(window, "AXPosition", AxPoint{10, 40});
  accessibility().set(window, "AXMinimized", true);
  EXPECT_EQ(accessibility().perform(window, "AXRaise"), Performed::refused);
  EXPECT_EQ(accessibility().perform(closeButton, "AXPress"), Performed::refused);
  EXPECT_TRUE(find(pid, "Stays.txt").has_value());
}

TEST_F(AccessibilityContract, MovesAWindowAndReadsBackWhereItIs) {
  const auto pid = world().launch("editor");
  world().open(pid, "Moving.txt", frame);
  const Element window = elementOf(pid, "Moving.txt");
  accessibility().set(window, "AXPosition", AxPoint{250, 220});
  EXPECT_TRUE(wait([&] {
    const auto seen = frameOf(window);
    return seen && near(seen->x, 250) && near(seen->y, 220);
  }));
}

TEST_F(AccessibilityContract, ResizesAWindowAndReadsBackItsSize) {
  const auto pid = world().launch("editor");
  world().open(pid, "Growing.txt", frame);
  const Element window = elementOf(pid, "Growing.txt");
  accessibility().set(window, "AXSize", Size{480, 360});
  EXPECT_TRUE(wait([&] {
    const auto seen = frameOf(window);
    return seen && near(seen->width, 480) && near(seen->height, 360);
  }));
}

TEST_F(AccessibilityContract, IgnoresAWriteOfAnotherType) {
  const auto pid = world().launch("editor");
  world().open(pid, "Steady.txt", frame);
  const Element window = elementOf(pid, "Steady.txt");
  ASSERT_TRUE(wait([&] { return frameOf(window) && near(frameOf(window)->x, frame.x); }));
  const auto before = frameOf(window);
  accessibility().set(window, "AXPosition", std::string("0,0"));
  accessibility().set(window, "AXSize", true);
  accessibility().set(window, "AXMinimized", Size{1, 1});
  accessibility().set(window, "AXNoSuchThing", true);
  EXPECT_EQ(accessibility().perform(window, "AXNoSuchAction"), Performed::refused);
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(frameOf(window), before);
  EXPECT_EQ(read<bool>(window, "AXMinimized"), false);
}

TEST_F(AccessibilityContract, MinimisesAndRestoresAWindow) {
  const auto pid = world().launch("editor");
  world().open(pid, "Small.txt", frame);
  const Element window = elementOf(pid, "Small.txt");
  accessibility().set(window, "AXMinimized", true);
  EXPECT_TRUE(wait([&] { return read<bool>(window, "AXMinimized") == true; }));
  EXPECT_TRUE(find(pid, "Small.txt").has_value()) << "a minimised window is still listed";
  accessibility().set(window, "AXMinimized", false);
  EXPECT_TRUE(wait([&] { return read<bool>(window, "AXMinimized") == false; }));
}

TEST_F(AccessibilityContract, NamesTheFocusedWindowAndRaisesAnother) {
  const auto pid = world().launch("editor");
  const auto first = world().open(pid, "First.txt", frame);
  world().open(pid, "Second.txt", {200, 240, 500, 300});
  const Element firstElement = elementOf(pid, "First.txt");
  const Element secondElement = elementOf(pid, "Second.txt");
  ASSERT_TRUE(wait([&] { return isFocused(pid, secondElement); }));
  world().focus(first);
  ASSERT_TRUE(wait([&] { return isFocused(pid, firstElement); }));
  EXPECT_EQ(accessibility().perform(secondElement, "AXRaise"), Performed::done);
  EXPECT_TRUE(wait([&] { return isFocused(pid, secondElement); }));
}

TEST_F(AccessibilityContract, ClosesAWindowByItsCloseButton) {
  const auto pid = world().launch("editor");
  world().open(pid, "Closing.txt", frame);
  world().open(pid, "Staying.txt", {200, 240, 500, 300});
  const Element window = elementOf(pid, "Closing.txt");
  const auto button = read<Element>(window, "AXCloseButton");
  ASSERT_TRUE(button.has_value());
  accessibility().perform(*button, "AXPress");
  EXPECT_TRUE(wait([&] { return !find(pid, "Closing.txt").has_value(); }));
  EXPECT_TRUE(find(pid, "Staying.txt").has_value());
}

TEST_F(AccessibilityContract, AnswersTheSameAfterSayingWhatWillBeRead) {
  const auto pid = world().launch("editor");
  world().open(pid, "One.txt", frame);
  const auto gone = world().open(pid, "Two.txt", {200, 240, 500, 300});
  const Element first = elementOf(pid, "One.txt");
  const Element second = elementOf(pid, "Two.txt");
  world().destroy(gone);
  ASSERT_TRUE(wait([&] { return !read<std::string>(second, "AXTitle"); }));
  const std::array elements{first, second};
  accessibility().willRead(elements, windowAttributes);
  EXPECT_EQ(read<std::string>(first, "AXTitle"), "One.txt");
  EXPECT_EQ(read<bool>(first, "AXMinimized"), false);
  EXPECT_FALSE(read<std::string>(second, "AXTitle").has_value());
  accessibility().willRead({}, windowAttributes);
  accessibility().willRead(elements, {});
  EXPECT_EQ(read<std::string>(first, "AXTitle"), "One.txt");
}

TEST_F(AccessibilityContract, DoesNotAnswerALaterReadFromAnEarlierFetch) {
  const auto pid = world().launch("editor");
  const auto opened = world().open(pid, "Before.txt", frame);
  const Element window = elementOf(pid, "Before.txt");
  const std::array elements{window};
  accessibility().willRead(elements, windowAttributes);
  EXPECT_EQ(read<std::string>(window, "AXTitle"), "Before.txt");
  world().retitle(opened, "After.txt");
  EXPECT_TRUE(wait([&] { return read<std::string>(window, "AXTitle") == "After.txt"; }));
}

class ObserverContract : public ContractTest {
 protected:
  ObserverContract() : pid(world().launch("editor")), opened(world().open(pid, "Watched.txt", frame)) {
    elementOf(pid, "Watched.txt");
  }

  // An observer of everything the tracker listens to; it counts.
  std::unique_ptr<ElementObserver> watch(std::function<void()> callback) {
    std::unique_ptr<ElementObserver> observer;
    wait([&] { return (observer = accessibility().observe(pid, callback)) != nullptr; });
    if (observer == nullptr) throw std::runtime_error("no observer");
    for (const auto name :
         {"AXFocusedWindowChanged", "AXWindowCreated", "AXUIElementDestroyed", "AXWindowMoved",
          "AXWindowResized", "AXWindowMiniaturized", "AXWindowDeminiaturized", "AXTitleChanged",
          "AXApplicationHidden", "AXApplicationShown"}) {
      observer->add(accessibility().applicationElement(pid), name);
    }
    return observer;
  }
  // The same, and of the window's own.
  std::unique_ptr<ElementObserver> watchWithWindow(std::function<void()> callback, const Element& window) {
    auto observer = watch(std::move(callback));
    for (const auto name : ownNotifications)
      EXPECT_EQ(observer->add(window, name), Registration::made) << name;
    return observer;
  }

  static constexpr std::array<std::string_view, 3> ownNotifications{
      "AXUIElementDestroyed", "AXWindowMiniaturized", "AXWindowDeminiaturized"};

  // Runs until what is still under way has been reported.
  void calm(const int& count) {
    int before = -1;
    while (before != count) {
      before = count;
      letPass(std::chrono::milliseconds(100));
    }
  }

  ProcessId pid;
  WorldWindow opened;
};

TEST_F(ObserverContract, HearsOfEveryChangeButNotInsideTheRegistration) {
  int heard = 0;
  const Element window = elementOf(pid, "Watched.txt");
  const auto observer = watchWithWindow([&heard] { ++heard; }, window);
  EXPECT_EQ(heard, 0);
  const auto happens = [&](const char* what, const std::function<void()>& change) {
    calm(heard);
    heard = 0;
    change();
    EXPECT_TRUE(wait([&heard] { return heard > 0; })) << what;
  };
  happens("a new title", [&] { world().retitle(opened, "Renamed.txt"); });
  happens("a move", [&] { world().moveTo(opened, {260, 230}); });
  happens("a minimisation", [&] { world().minimise(opened); });
  happens("a restoration", [&] { world().restore(opened); });
  WorldWindow second{};
  happens("a new window", [&] { second = world().open(pid, "New.txt", {200, 240, 500, 300}); });
  for (const auto name : ownNotifications) observer->add(elementOf(pid, "New.txt"), name);
  happens("another focus", [&] { world().focus(opened); });
  happens("a closed window", [&] { world().destroy(second); });
}

TEST_F(ObserverContract, ARegistrationOfAWindowIsMadeTwiceAndTakenBackTwiceWithoutHarm) {
  const Element window = elementOf(pid, "Watched.txt");
  const auto observer = watchWithWindow([] {}, window);
  for (const auto name : ownNotifications) {
    EXPECT_EQ(observer->add(window, name), Registration::made);
    observer->remove(window, name);
    observer->remove(window, name);
  }
}

TEST_F(ObserverContract, ReadsThatAreAnsweredCountAsSuch) {
  const auto before = accessibility().unansweredReads();
  EXPECT_EQ(windowsOf(pid).size(), 1U);
  EXPECT_EQ(read<std::string>(elementOf(pid, "Watched.txt"), "AXTitle"), "Watched.txt");
  EXPECT_EQ(accessibility().unansweredReads(), before);
}

TEST_F(ObserverContract, IsSilentOnceItIsDropped) {
  int heard = 0;
  auto observer = watch([&heard] { ++heard; });
  calm(heard);
  heard = 0;
  world().retitle(opened, "Pending.txt");
  observer.reset();
  letPass(std::chrono::milliseconds(150));
  world().retitle(opened, "Later.txt");
  elementOf(pid, "Later.txt");
  letPass(std::chrono::milliseconds(150));
  EXPECT_EQ(heard, 0);
}

TEST_F(ObserverContract, MayBeDroppedByItsOwnCallback) {
  int heard = 0;
  std::unique_ptr<ElementObserver> observer;
  observer = watch([&] {
    ++heard;
    observer.reset();
  });
  world().retitle(opened, "One.txt");
  ASSERT_TRUE(wait([&heard] { return heard > 0; }));
  world().retitle(opened, "Two.txt");
  elementOf(pid, "Two.txt");
  letPass(std::chrono::milliseconds(150));
  EXPECT_EQ(heard, 1);
}

TEST_F(ObserverContract, HearsOnlyWhatWasAdded) {
  int heard = 0;
  const auto observer = accessibility().observe(pid, [&heard] { ++heard; });
  ASSERT_NE(observer, nullptr);
  world().retitle(opened, "Unheard.txt");
  elementOf(pid, "Unheard.txt");
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(heard, 0);
}

TEST_F(ObserverContract, IsHarmlessAfterItsProcessHasEnded) {
  int heard = 0;
  auto observer = watch([&heard] { ++heard; });
  world().terminate(pid);
  ASSERT_TRUE(wait([&] { return windowsOf(pid).empty(); }));
  observer->add(accessibility().applicationElement(pid), "AXTitleChanged");
  observer.reset();
  letPass(std::chrono::milliseconds(50));
}

}  // namespace pellar::contract
