#include "platform/mac/desktop/MacPlainWindow.h"

#include "platform/mac/system/Conversions.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

// Windows that are made and never shown: nobody is there to look.
class MacPlainWindowTest : public ContractTest {
 protected:
  void make(const WindowDescription& description) {
    window = std::make_unique<MacPlainWindow>(mainLoop(), description);
    [window->native() layoutIfNeeded];
  }
  // Every view of a kind in the window, the outer before the inner and the upper before the lower.
  template <class T>
  static void collect(NSView* view, Class kind, std::vector<T*>& found) {
    if ([view isKindOfClass:kind]) found.push_back(static_cast<T*>(view));
    for (NSView* inner in view.subviews) collect(inner, kind, found);
  }
  std::vector<NSButton*> buttons() {
    std::vector<NSButton*> found;
    collect(window->native().contentView, ClosureButton.class, found);
    return found;
  }
  std::vector<NSTextField*> labels() {
    std::vector<NSTextField*> found;
    collect(window->native().contentView, NSTextField.class, found);
    return found;
  }
  static NSRect inWindow(NSView* view) { return [view convertRect:view.bounds toView:nil]; }

  std::unique_ptr<MacPlainWindow> window;
};

TEST_F(MacPlainWindowTest, HasTheSizeTitleLevelAndButtonsOfItsDescription) {
  make({.title = "About", .contentSize = {360, 260}, .elements = {}});
  NSWindow* native = window->native();
  EXPECT_EQ(native.contentView.frame.size.width, 360);
  EXPECT_EQ(native.contentView.frame.size.height, 260);
  EXPECT_EQ(fromNSString(native.title), "About");
  EXPECT_EQ(native.level, NSNormalWindowLevel);
  EXPECT_NE(native.styleMask & NSWindowStyleMaskClosable, 0U);
  EXPECT_FALSE(window->isVisible());
  make({.title = "Terms",
        .contentSize = {440, 360},
        .closable = false,
        .level = WindowLevel::modalPanel,
        .elements = {}});
  EXPECT_EQ(window->native().level, NSModalPanelWindowLevel);
  EXPECT_EQ(window->native().styleMask & NSWindowStyleMaskClosable, 0U);
}

TEST_F(MacPlainWindowTest, ItsColumnStandsFromTopToBottomInsideTheInsets) {
  make({.title = "About",
        .contentSize = {360, 260},
        .spacing = 8,
        .insets = {26, 24, 24, 24},
        .elements = {WindowLabel{.text = "Pellar", .fontSize = 26, .weight = LabelWeight::semibold},
                     WindowSpacer{10}, WindowLabel{.text = "Version 1"}}});
  const auto found = labels();
  ASSERT_EQ(found.size(), 2U);
  const NSRect heading = inWindow(found[0]);
  const NSRect version = inWindow(found[1]);
  EXPECT_NEAR(NSMaxY(heading), 260 - 26, 2);
  EXPECT_NEAR(NSMidX(heading), 180, 2);
  EXPECT_LE(NSMaxY(version), NSMinY(heading) - 25) << "a spacer and two gaps";
}

TEST_F(MacPlainWindowTest, ATextThatIsTooLongIsCutOff) {
  make({.title = "About",
        .contentSize = {360, 260},
        .insets = {26, 24, 24, 24},
        .elements = {WindowLabel{.id = "status", .text = ""}}});
  window->setText("status", "Update to " + std::string(1000, '9') + "\n is ready.");
  [window->native() layoutIfNeeded];
  EXPECT_EQ(window->native().contentView.frame.size.width, 360);
  const NSRect label = inWindow(labels()[0]);
  EXPECT_GE(NSMinX(label), 20);
  EXPECT_LE(NSMaxX(label), 340);
  EXPECT_LT(NSHeight(label), 30) << "one line";
}

TEST_F(MacPlainWindowTest, OfAnAbsurdVersionNoMoreIsLaidOutThanCouldBeSeen) {
  const std::string absurd(1 << 20, '9');
  make({.title = "About",
        .contentSize = {360, 260},
        .elements = {WindowLabel{.text = "Agreement (v" + absurd + ")"},
                     WindowLabel{.id = "status", .text = ""}}});
  window->setText("status", "Update to " + absurd + " is ready.");
  const std::string heading = fromNSString(labels()[0].stringValue);
  const std::string status = fromNSString(labels()[1].stringValue);
  EXPECT_TRUE(heading.starts_with("Agreement (v999"));
  EXPECT_LT(heading.size(), 1100U);
  EXPECT_TRUE(status.starts_with("Update to 999"));
  EXPECT_LT(status.size(), 1100U);
}

TEST_F(MacPlainWindowTest, AnElementWithAFrameStandsInIt) {
  make({.title = "Access",
        .contentSize = {420, 170},
        .elements = {
            WindowLabel{.text = "Allow it.", .frame = WindowFrame{20, 70, 380, 80}},
            WindowButton{.title = "Open settings", .handler = {}, .frame = WindowFrame{20, 20, 220, 32}}}});
  ASSERT_EQ(labels().size(), 1U);
  ASSERT_EQ(buttons().size(), 1U);
  EXPECT_TRUE(NSEqualRects(labels()[0].frame, NSMakeRect(20, 70, 380, 80)));
  EXPECT_TRUE(NSEqualRects(buttons()[0].frame, NSMakeRect(20, 20, 220, 32)));
}

TEST_F(MacPlainWindowTest, OnlyTheNamedLabelChanges) {
  make({.title = "About",
        .contentSize = {360, 260},
        .elements = {WindowLabel{.text = "Version 1"}, WindowLabel{.id = "status", .text = ""}}});
  window->setText("status", "Checking\u2026");
  window->setText("nothing", "never seen");
  EXPECT_EQ(fromNSString(labels()[0].stringValue), "Version 1");
  EXPECT_EQ(fromNSString(labels()[1].stringValue), "Checking\u2026");
}

TEST_F(MacPlainWindowTest, ATextBoxShowsItsTextAcrossTheColumn) {
  make({.title = "Terms",
        .contentSize = {440, 360},
        .alignment = StackAlignment::trailing,
        .insets = {18, 20, 18, 20},
        .elements = {WindowTextBox{.text = "1. Agreed.", .height = 210, .inset = 6}}});
  std::vector<NSTextView*> texts;
  collect(window->native().contentView, NSTextView.class, texts);
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(fromNSString(texts[0].string), "1. Agreed.");
  EXPECT_FALSE(texts[0].editable);
  ASSERT_EQ(texts[0].textStorage.length, 10U);
  NSDictionary<NSAttributedStringKey, id>* look = [texts[0].textStorage attributesAtIndex:0
                                                                           effectiveRange:nil];
  EXPECT_TRUE([look[NSForegroundColorAttributeName] isEqual:NSColor.labelColor])
      << "black would not be seen on a dark window";
  EXPECT_TRUE([look[NSFontAttributeName] isEqual:[NSFont systemFontOfSize:NSFont.systemFontSize]]);
  NSView* box = texts[0].enclosingScrollView;
  EXPECT_NEAR(box.frame.size.height, 210, 1);
  EXPECT_NEAR(box.frame.size.width, 400, 1);
}

TEST_F(MacPlainWindowTest, AColumnReachesTheLowerEdgeWhereItIsToldTo) {
  for (const bool reaches : {true, false}) {
    make({.title = "Terms",
          .contentSize = {440, 360},
          .columnReachesBottom = reaches,
          .insets = {18, 20, 18, 20},
          .elements = {WindowLabel{.text = "End User Agreement"}}});
    NSView* column = window->native().contentView.subviews.firstObject;
    EXPECT_EQ(NSHeight(column.frame) == 360, reaches);
    EXPECT_EQ(window->native().contentView.frame.size.height, 360);
    EXPECT_NEAR(NSMaxY(inWindow(labels()[0])), 360 - 18, 2) << "at the top either way";
  }
}

TEST_F(MacPlainWindowTest, ReturnPressesTheDefaultButton) {
  std::vector<std::string> pressed;
  make({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {WindowButtonRow{
            10,
            {WindowButton{.title = "Quit", .handler = [&pressed] { pressed.emplace_back("Quit"); }},
             WindowButton{.title = "I Agree",
                          .handler = [&pressed] { pressed.emplace_back("I Agree"); },
                          .isDefault = true}}}}});
  const auto found = buttons();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_LT(NSMinX(inWindow(found[0])), NSMinX(inWindow(found[1])));
  EXPECT_EQ(fromNSString(found[0].keyEquivalent), "");
  EXPECT_EQ(fromNSString(found[1].keyEquivalent), "\r");
  [found[0] performClick:nil];
  [found[1] performClick:nil];
  EXPECT_EQ(pressed, (std::vector<std::string>{"Quit", "I Agree"}));
}

TEST_F(MacPlainWindowTest, AButtonMayDestroyItsWindow) {
  make({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {WindowButton{.title = "I Agree", .handler = [this] { window.reset(); }}}});
  [buttons().front() performClick:nil];
  EXPECT_EQ(window, nullptr);
  letPass(std::chrono::milliseconds(50));
}

TEST_F(MacPlainWindowTest, TellsOnlyOfTheUsersClosing) {
  make({.title = "About", .contentSize = {360, 260}, .elements = {}});
  int closed = 0;
  const auto subscription = window->onClosed([&closed] { ++closed; });
  window->close();
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(closed, 0);
  [window->native() performClose:nil];
  EXPECT_EQ(closed, 0) << "not inside the click";
  EXPECT_TRUE(wait([&closed] { return closed == 1; }));
}

TEST_F(MacPlainWindowTest, TellsNobodyWhoNoLongerListens) {
  make({.title = "About", .contentSize = {360, 260}, .elements = {}});
  int closed = 0;
  auto subscription = window->onClosed([&closed] { ++closed; });
  [window->native() performClose:nil];
  subscription.cancel();
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(closed, 0);
}

}  // namespace pellar::contract
