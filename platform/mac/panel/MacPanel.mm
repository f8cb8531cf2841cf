#include "platform/mac/panel/MacPanel.h"

#import <QuartzCore/QuartzCore.h>

#include <algorithm>
#include <cmath>
#include <utility>

#import "platform/mac/panel/GlassView.h"
#import "platform/mac/panel/HostedView.h"
#include "platform/mac/panel/ListFocus.h"
#import "platform/mac/panel/StripPanel.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/MouseButtons.h"
#include "platform/mac/system/ObservedNotification.h"

namespace pellar {
namespace {

// Over another application's full-screen window three things are needed together: the auxiliary behaviour, a
// level above that window's, and a real NSPanel (github.com/karansinghgit/speaktype/pull/142).
NSWindowCollectionBehavior behaviorOf(const PanelStyle& style) {
  NSWindowCollectionBehavior behavior =
      NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
  if (style.stationary) behavior |= NSWindowCollectionBehaviorStationary;
  if (style.ignoresCycle) behavior |= NSWindowCollectionBehaviorIgnoresCycle;
  return behavior;
}

NSPanel* makePanel(const PanelStyle& style) {
  const NSRect content = NSMakeRect(0, 0, style.contentSize.width, style.contentSize.height);
  Class kind = style.canBecomeKey ? StripPanel.class : NSPanel.class;
  NSPanel* panel = [[kind alloc] initWithContentRect:content
                                           styleMask:NSWindowStyleMaskNonactivatingPanel
                                             backing:NSBackingStoreBuffered
                                               defer:NO];
  panel.level = static_cast<NSWindowLevel>(style.level);
  panel.opaque = NO;
  panel.backgroundColor = NSColor.clearColor;
  panel.hasShadow = YES;
  panel.hidesOnDeactivate = NO;
  panel.releasedWhenClosed = NO;
  // Its place is the window's that it belongs to: neither "Hide Others" nor a change of displays, after which
  // the system moves what may be moved (NSWindow.h), has a say in it.
  panel.canHide = NO;
  panel.movable = NO;
  panel.collectionBehavior = behaviorOf(style);
  // A click on a tab must leave the keyboard where it is; a click in a text field, which asks for it, and an
  // explicit makeKeyAndOrderFront get it.
  panel.becomesKeyOnlyIfNeeded = YES;
  panel.animationBehavior = NSWindowAnimationBehaviorNone;
  return panel;
}

HostedView* makeHostedView(NSPanel* panel, const PanelStyle& style) {
  const NSRect bounds = NSMakeRect(0, 0, style.contentSize.width, style.contentSize.height);
  HostedView* hosted = [[HostedView alloc] initWithFrame:bounds];
  hosted.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
  if (style.glass) {
    GlassView* glass = [[GlassView alloc] initWithFrame:bounds];
    [glass addSubview:hosted];
    panel.contentView = glass;
  } else {
    panel.contentView = hosted;
  }
  return hosted;
}

// The strip goes where another program says its window is. AppKit raises an exception for a frame that an int
// cannot hold (github.com/WebKit/WebKit/pull/67714), and would make a picture of any smaller one. Windows are
// whole points large, and what just fits into the frame must go on fitting.
NSRect placeable(const ScreenRect& frame) {
  constexpr double farthest = 1'000'000;  // points; beyond any arrangement of screens
  constexpr double longest = 32'000;
  return NSMakeRect(std::clamp(frame.x, -farthest, farthest), std::clamp(frame.y, -farthest, farthest),
                    std::ceil(std::clamp(frame.width, 0.0, longest)),
                    std::ceil(std::clamp(frame.height, 0.0, longest)));
}

}  // namespace

MacPanel::MacPanel(const PanelStyle& style, std::shared_ptr<ListFocus> listFocus,
                   std::function<void(const MacPanel&, ScreenPoint)> onAccessiblePress,
                   std::function<void(const MacPanel&)> onDestroyed)
    : native_(makePanel(style)),
      listFocus_(std::move(listFocus)),
      host_(makeHostedView(native_, style), listFocus_),
      onDestroyed_(std::move(onDestroyed)),
      // A list has the keys of the key panel, and none without it.
      resignedKey_(onDidResignKey([this] { listFocus_->end(); })) {
  host_.native().onAccessiblePress = ^(ScreenPoint place) {
    onAccessiblePress(*this, place);
  };
}

MacPanel::~MacPanel() {
  host_.native().view = nullptr;
  host_.native().onAccessiblePress = nil;
  [native_ orderOut:nil];
  [native_ close];
  onDestroyed_(*this);
}

void MacPanel::setView(View* view) {
  host_.native().view = view;
}

void MacPanel::setFrame(const ScreenRect& frame, bool display) {
  const NSRect before = native_.frame;
  [native_ setFrame:placeable(frame) display:display];
  // The shadow of a translucent window is taken from its picture, and is not taken again by itself.
  if (!NSEqualSizes(before.size, native_.frame.size)) [native_ invalidateShadow];
  if (display) {
    [native_ layoutIfNeeded];
    [native_ displayIfNeeded];
    [CATransaction flush];
  }
}

ScreenRect MacPanel::frame() const {
  return fromNSRect<ScreenSpace>(native_.frame);
}

std::optional<ScreenRect> MacPanel::screenVisibleFrame() const {
  NSScreen* screen = native_.screen;
  if (screen == nil) return std::nullopt;
  return fromNSRect<ScreenSpace>(screen.visibleFrame);
}

void MacPanel::orderFrontRegardless() {
  shown_ = true;
  const bool wasVisible = native_.visible;
  [native_ orderFrontRegardless];
  if (!wasVisible) host_.accessibleElementChanged();
}

void MacPanel::orderOut() {
  shown_ = false;
  release_.cancel();
  listFocus_->endIn(native_);
  [native_ orderOut:nil];
  [host_.native() leaveScreen];
  host_.accessibleElementChanged();
}

bool MacPanel::isVisible() const {
  return native_.visible;
}

// A non-activating panel gets the keyboard while the application in front stays active (NSWindow.h,
// NSWindowStyleMaskNonactivatingPanel).
void MacPanel::makeKeyAndOrderFront() {
  shown_ = true;
  release_.cancel();
  [native_ makeKeyAndOrderFront:nil];
}

// -resignKeyWindow is not to be called (NSWindow.h): it tells the window and its observers, and who has the
// keyboard is for the window server to say. That takes it back from a panel that leaves the screen. Leaving
// it and coming back are one change to the eye (NSGraphics.h on visual atomicity), but not to a press in it:
// under a held button the window server would send drag and release elsewhere, so it waits for the release.
void MacPanel::resignKey() {
  if (!native_.keyWindow) return;
  release_ = whenNoButtonIsDown([this] { leaveAndComeBack(); });
}

void MacPanel::leaveAndComeBack() {
  if (!native_.keyWindow) return;
  [NSAnimationContext runAnimationGroup:^(NSAnimationContext* context) {
    context.duration = 0;
    [native_ orderOut:nil];
    // Whoever was told may have put the panel away for good.
    if (shown_) [native_ orderFrontRegardless];
  }];
}

bool MacPanel::isKey() const {
  return native_.keyWindow;
}

void MacPanel::clearFirstResponder() {
  if (native_.keyWindow) listFocus_->end();
  [native_ makeFirstResponder:nil];
}

Subscription MacPanel::onDidResignKey(std::function<void()> callback) {
  return observeNotification(NSNotificationCenter.defaultCenter, NSWindowDidResignKeyNotification, native_,
                             [callback = std::move(callback)](NSNotification*) { callback(); });
}

}  // namespace pellar
