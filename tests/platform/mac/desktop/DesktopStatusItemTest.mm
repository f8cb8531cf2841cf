#import <AppKit/AppKit.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/StatusBar.h"
#include "platform/mac/system/Conversions.h"
#include "tests/platform/mac/MacDesktopTest.h"

namespace pellar::contract {

class DesktopStatusItemTest : public MacDesktopTest {
 protected:
  ClosureItem item(const std::string& title) {
    return {title, [this, title] { chosen.push_back(title); }};
  }
  Subscription addItem() {
    return world().platform().statusBar.addItem({.imageName = "", .imageHeight = 16, .title = "Pellar"},
                                                [this] {
                                                  ++asked;
                                                  return Menu{item("About"), item("Quit")};
                                                });
  }
  // The middle of the item in the menu bar.
  ScreenPoint place() {
    NSWindow* found = nil;
    for (NSWindow* window in NSApp.windows) {
      if (window.visible && window.level == NSStatusWindowLevel) found = window;
    }
    if (found == nil) throw std::runtime_error("nothing is in the menu bar");
    return fromNSPoint<ScreenSpace>(NSMakePoint(NSMidX(found.frame), NSMidY(found.frame)));
  }
  void click() {
    world().pressLeft(place());
    world().releaseLeft();
  }

  std::vector<std::string> chosen;
  int asked = 0;
};

TEST_F(DesktopStatusItemTest, AClickOpensItsMenuAndWhatIsChosenIsRun) {
  const auto subscription = addItem();
  letPass(std::chrono::milliseconds(500));
  EXPECT_EQ(asked, 0) << "not before it opens";
  world().workNextMenu(1);
  click();
  EXPECT_TRUE(wait([this] { return chosen == std::vector<std::string>{"Quit"}; }));
  EXPECT_EQ(asked, 1);
}

TEST_F(DesktopStatusItemTest, IsAskedAnewAtEachOpening) {
  const auto subscription = addItem();
  letPass(std::chrono::milliseconds(500));
  for (const int times : {1, 2}) {
    world().workNextMenu(std::nullopt);
    click();
    EXPECT_TRUE(wait([&] { return asked == times; }));
    letPass(std::chrono::milliseconds(500));
  }
  EXPECT_TRUE(chosen.empty());
}

}  // namespace pellar::contract
