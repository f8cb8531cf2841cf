#include "tests/platform/mac/MacDesktopTest.h"

namespace pellar::contract {

using std::chrono::milliseconds;
using std::chrono::seconds;

class DesktopApplicationTest : public MacDesktopTest {};

TEST_F(DesktopApplicationTest, TakesNoObserverWhileItStartsAndOneAfterwards) {
  const ProcessId pid = mac().launchCold("editor", seconds(3));
  EXPECT_FALSE(canBeObserved(pid));
  ASSERT_TRUE(wait([&] { return canBeObserved(pid); }));
  int heard = 0;
  const auto observer = accessibility().observe(pid, [&heard] { ++heard; });
  ASSERT_NE(observer, nullptr);
  observer->add(accessibility().applicationElement(pid), "AXWindowCreated");
  world().open(pid, "Plan.txt", {120, 160, 600, 400});
  EXPECT_TRUE(wait([&heard] { return heard > 0; }));
}

// Longer than the time that the system waits for an answer.
TEST_F(DesktopApplicationTest, ReadsNothingFromOneThatHangsAndAllOfItWhenItAnswersAgain) {
  const ProcessId pid = world().launch("editor");
  world().open(pid, "Plan.txt", {120, 160, 600, 400});
  const Element window = elementOf(pid, "Plan.txt");
  mac().hang(pid, 10);
  EXPECT_EQ(read<std::string>(window, "AXTitle"), std::nullopt);
  EXPECT_TRUE(wait([&] { return read<std::string>(window, "AXTitle") == "Plan.txt"; }));
}

TEST_F(DesktopApplicationTest, NamesTheFileOfADocumentsWindow) {
  const ProcessId pid = world().launch("editor");
  const WorldWindow opened = world().open(pid, "Plan.txt", {120, 160, 600, 400});
  const Element window = elementOf(pid, "Plan.txt");
  mac().represent(opened, "/private/tmp/Plan B.txt");
  EXPECT_TRUE(wait([&] {
    const auto file = read<std::string>(window, "AXDocument");
    return file && file->starts_with("file:///") && file->ends_with("/tmp/Plan%20B.txt");
  }));
}

class DesktopMenuBarTest : public MacDesktopTest {
 protected:
  DesktopMenuBarTest()
      : pid(world().launch("editor")), window(world().open(pid, "Plan.txt", {120, 160, 600, 400})) {
    elementOf(pid, "Plan.txt");
    if (!wait([this] { return isInFront(pid); })) throw std::runtime_error("nothing comes to the front");
  }

  // An item of the File menu, which nobody has opened.
  std::optional<Element> item(const std::string& title) {
    const auto bar = read<Element>(accessibility().applicationElement(pid), "AXMenuBar");
    const auto file = bar ? childOf(*bar, "File") : std::nullopt;
    if (!file) return std::nullopt;
    for (const Element& menu : childrenOf(*file)) {
      if (const auto found = childOf(menu, title)) return found;
    }
    return std::nullopt;
  }

  ProcessId pid;
  WorldWindow window;
};

TEST_F(DesktopMenuBarTest, APressOfSaveSavesADocumentWithChanges) {
  mac().edit(window);
  const auto save = item("Save");
  ASSERT_TRUE(save.has_value());
  // Whatever it reports: it may have worked and say that it has not.
  static_cast<void>(accessibility().perform(*save, "AXPress"));
  EXPECT_TRUE(wait([this] { return mac().saves(window) == 1; }));
}

TEST_F(DesktopMenuBarTest, APressOfSaveSavesNothingThatHasNoChanges) {
  const auto save = item("Save");
  ASSERT_TRUE(save.has_value());
  static_cast<void>(accessibility().perform(*save, "AXPress"));
  letPass(milliseconds(500));
  EXPECT_EQ(mac().saves(window), 0);
}

TEST_F(DesktopMenuBarTest, TheItemsOfASubmenuAreRead) {
  const auto recent = item("Open Recent");
  ASSERT_TRUE(recent.has_value());
  const auto menus = childrenOf(*recent);
  ASSERT_EQ(menus.size(), 1U);
  EXPECT_TRUE(childOf(menus.front(), "Clear Menu").has_value());
}

}  // namespace pellar::contract
