#include "platform/mac/panel/MacPanel.h"

#import "platform/mac/panel/HostedView.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/RecordingView.h"

namespace pellar::contract {

// A view in a panel, and events as AppKit would hand them to it.
class MacHostedViewTest : public ContractTest {
 protected:
  MacHostedViewTest()
      : panel(world().platform().panels.makePanel({.contentSize = {400, 32}, .canBecomeKey = true})),
        hosted(static_cast<MacViewHost&>(panel->host()).native()) {
    panel->setView(&view);
    panel->setFrame({200, 300, 400, 32}, false);
    panel->orderFrontRegardless();
  }
  void TearDown() override { panel->setView(nullptr); }

  [[nodiscard]] NSPanel* nativePanel() const { return static_cast<const MacPanel&>(*panel).native(); }
  // At a place in the window, whose lower left corner is the origin.
  [[nodiscard]] NSEvent* event(NSEventType type, NSPoint place, NSInteger clickCount = 1,
                               NSEventModifierFlags held = 0, NSTimeInterval time = 0) const {
    return [NSEvent mouseEventWithType:type
                              location:place
                         modifierFlags:held
                             timestamp:time
                          windowNumber:nativePanel().windowNumber
                               context:nil
                           eventNumber:0
                            clickCount:clickCount
                              pressure:1];
  }
  [[nodiscard]] NSEvent* crossing(NSEventType type) const {
    return [NSEvent enterExitEventWithType:type
                                  location:NSMakePoint(10, 10)
                             modifierFlags:0
                                 timestamp:0
                              windowNumber:nativePanel().windowNumber
                                   context:nil
                               eventNumber:0
                            trackingNumber:0
                                  userData:nullptr];
  }

  RecordingView view;  // depends-on: nothing; the panel goes first
  std::unique_ptr<Panel> panel;
  HostedView* hosted;
};

TEST_F(MacHostedViewTest, ActsOnTheFirstClickAndNeverTakesTheKeyboard) {
  EXPECT_TRUE(hosted.flipped);
  EXPECT_TRUE([hosted acceptsFirstMouse:nil]);
  EXPECT_FALSE(hosted.acceptsFirstResponder);
  EXPECT_FALSE(hosted.mouseDownCanMoveWindow);
  EXPECT_TRUE(hosted.clipsToBounds);
}

TEST_F(MacHostedViewTest, VoiceOverFindsWhatTheViewDescribesAndPressesIt) {
  AccessibleElement tab{.id = "tab 1",
                        .role = AccessibleRole::tab,
                        .name = "Plan",
                        .help = "Colour tag: Red",
                        .frame = {10, 3, 100, 26},
                        .selected = true,
                        .canBePressed = true};
  view.element = {.id = "strip", .name = "Tab strip", .children = {tab}};
  EXPECT_TRUE([hosted.accessibilityLabel isEqualToString:@"Tab strip"]);
  NSArray* children = hosted.accessibilityChildren;
  ASSERT_EQ(children.count, 1U);
  NSAccessibilityElement* item = children.firstObject;
  EXPECT_TRUE([item.accessibilityLabel isEqualToString:@"Plan"]);
  EXPECT_TRUE([item.accessibilityHelp isEqualToString:@"Colour tag: Red"]);
  EXPECT_TRUE([item.accessibilityValue isEqual:@YES]);
  EXPECT_TRUE(NSEqualRects(item.accessibilityFrame, NSMakeRect(210, 303, 100, 26)));
  EXPECT_EQ([hosted accessibilityHitTest:NSMakePoint(250, 310)], item);
  EXPECT_EQ(hosted.accessibilityChildren.firstObject, item);
  EXPECT_TRUE([item accessibilityPerformPress]);
  EXPECT_FALSE(view.heard("perform press tab 1"));
  EXPECT_TRUE(wait([this] { return view.heard("perform press tab 1"); }));
}

TEST_F(MacHostedViewTest, APressIsWhereTheUserSeesIt) {
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20), 2)];
  ASSERT_EQ(view.events.size(), 1U);
  EXPECT_EQ(view.events[0].location, (ViewPoint{50, 12}));
  EXPECT_EQ(view.events[0].screenLocation, (ScreenPoint{250, 320}));
  EXPECT_EQ(view.events[0].clickCount, 2);
  EXPECT_FALSE(view.events[0].control);
}

TEST_F(MacHostedViewTest, AReleaseWhereThePressWasIsNoWayGone) {
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20))];
  [hosted mouseDragged:event(NSEventTypeLeftMouseDragged, NSMakePoint(50, 20))];
  [hosted mouseUp:event(NSEventTypeLeftMouseUp, NSMakePoint(50, 20))];
  ASSERT_EQ(view.events.size(), 3U);
  EXPECT_EQ(view.events[1].screenLocation, view.events[0].screenLocation);
  EXPECT_EQ(view.events[2].screenLocation, view.events[0].screenLocation);
}

TEST_F(MacHostedViewTest, APressWithControlSaysSo) {
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20), 1, NSEventModifierFlagControl)];
  ASSERT_EQ(view.events.size(), 1U);
  EXPECT_TRUE(view.events[0].control);
}

TEST_F(MacHostedViewTest, APressLongAfterTheLastOneInTheViewIsNoDoubleClick) {
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20))];
  [hosted mouseUp:event(NSEventTypeLeftMouseUp, NSMakePoint(50, 20))];
  const NSTimeInterval later = NSEvent.doubleClickInterval + 1;
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20), 2, 0, later)];
  EXPECT_EQ(view.events.back().clickCount, 1) << "the first press was a control's";
}

TEST_F(MacHostedViewTest, TakesNoPressOnceThePanelIsOffTheScreen) {
  panel->orderOut();
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20))];
  [hosted rightMouseDown:event(NSEventTypeRightMouseDown, NSMakePoint(50, 20))];
  [hosted mouseMoved:event(NSEventTypeMouseMoved, NSMakePoint(50, 20), 0)];
  EXPECT_TRUE(view.calls.empty());
}

TEST_F(MacHostedViewTest, ADragAndItsEndFollowOutside) {
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20))];
  [hosted mouseDragged:event(NSEventTypeLeftMouseDragged, NSMakePoint(80, -100))];
  [hosted mouseUp:event(NSEventTypeLeftMouseUp, NSMakePoint(80, -100))];
  EXPECT_EQ(view.calls, (std::vector<std::string>{"entered", "down", "dragged", "up"}));
  EXPECT_EQ(view.events[1].location, (ViewPoint{80, 132}));
}

TEST_F(MacHostedViewTest, ThePointerComesInBeforeItDoesAnything) {
  [hosted mouseMoved:event(NSEventTypeMouseMoved, NSMakePoint(50, 20), 0)];
  [hosted mouseEntered:crossing(NSEventTypeMouseEntered)];
  [hosted rightMouseDown:event(NSEventTypeRightMouseDown, NSMakePoint(50, 20))];
  [hosted mouseExited:crossing(NSEventTypeMouseExited)];
  [hosted mouseExited:crossing(NSEventTypeMouseExited)];
  EXPECT_EQ(view.calls, (std::vector<std::string>{"entered", "moved", "right", "exited"}));
}

TEST_F(MacHostedViewTest, ThePointerLeavesWithThePanel) {
  [hosted mouseEntered:crossing(NSEventTypeMouseEntered)];
  panel->orderOut();
  EXPECT_FALSE(view.heard("exited")) << "not inside the call";
  EXPECT_TRUE(wait([this] { return view.heard("exited"); }));
  panel->orderOut();
  [hosted mouseExited:crossing(NSEventTypeMouseExited)];
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(view.calls, (std::vector<std::string>{"entered", "exited"}));
}

TEST_F(MacHostedViewTest, AnotherViewIsEnteredAnew) {
  [hosted mouseEntered:crossing(NSEventTypeMouseEntered)];
  RecordingView next;
  panel->setView(&next);
  [hosted mouseMoved:event(NSEventTypeMouseMoved, NSMakePoint(50, 20), 0)];
  EXPECT_EQ(next.calls, (std::vector<std::string>{"entered", "moved"}));
  panel->setView(nullptr);
}

TEST_F(MacHostedViewTest, WithoutAViewNothingHappens) {
  panel->setView(nullptr);
  [hosted mouseDown:event(NSEventTypeLeftMouseDown, NSMakePoint(50, 20))];
  [hosted mouseEntered:crossing(NSEventTypeMouseEntered)];
  EXPECT_TRUE(view.calls.empty());
}

TEST_F(MacHostedViewTest, OneTrackingAreaCoversItAlways) {
  for (int time = 0; time < 2; ++time) [hosted updateTrackingAreas];
  ASSERT_EQ(hosted.trackingAreas.count, 1U);
  NSTrackingArea* area = hosted.trackingAreas.firstObject;
  EXPECT_TRUE(NSEqualRects(area.rect, hosted.bounds));
  EXPECT_EQ(area.options, NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved | NSTrackingActiveAlways);
}

}  // namespace pellar::contract
