#import "platform/mac/panel/HostedView.h"

#include <utility>

#include "platform/mac/drawing/MacCanvas.h"
#import "platform/mac/panel/AccessibleTree.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/NextTurn.h"

using pellar::MouseEvent;

@implementation HostedView {
  BOOL _pointerInside;
  BOOL _leftScreen;           // under the pointer, and the view has not been told
  NSTimeInterval _lastPress;  // of the left button, since the system started
  AccessibleTree* _accessible;
}

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil) {
    // Since macOS 14 views do not clip by themselves, and a long text would be drawn over its neighbours.
    self.clipsToBounds = YES;
    [self registerForDraggedTypes:@[ NSPasteboardTypeFileURL ]];
    _accessible = [[AccessibleTree alloc] initWithHost:self];
    // More contrast than before, or less. An observer that is gone is told nothing.
    [NSWorkspace.sharedWorkspace.notificationCenter
        addObserver:self
           selector:@selector(displayOptionsChanged:)
               name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
             object:nil];
  }
  return self;
}

- (void)displayOptionsChanged:(NSNotification*)notification {
  self.needsDisplay = YES;
}

- (BOOL)isFlipped {
  return YES;
}

- (BOOL)acceptsFirstResponder {
  return NO;
}

// The panel is practically never key; without this its first click would only choose it.
- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}

- (BOOL)mouseDownCanMoveWindow {
  return NO;
}

- (void)setView:(pellar::View*)view {
  if (_view != view) _pointerInside = NO;
  _view = view;
  [self accessibleElementChanged];
  self.needsLayout = YES;
  self.needsDisplay = YES;
}

- (void)layout {
  [super layout];
  if (_view != nullptr) _view->layout();
}

- (void)setFrameSize:(NSSize)size {
  [super setFrameSize:size];
  [self accessibleElementChanged];
  self.needsLayout = YES;
}

- (void)drawRect:(NSRect)dirtyRect {
  if (_view == nullptr) return;
  // Since macOS 14 the dirty rectangle may reach beyond the view.
  const NSRect dirty = NSIntersectionRect(dirtyRect, self.bounds);
  if (NSIsEmptyRect(dirty)) return;
  pellar::MacCanvas canvas;
  _view->draw(canvas, pellar::fromNSRect<pellar::ViewSpace>(dirty));
}

- (void)updateTrackingAreas {
  [super updateTrackingAreas];
  for (NSTrackingArea* area in [self.trackingAreas copy]) [self removeTrackingArea:area];
  const NSTrackingAreaOptions options =
      NSTrackingMouseEnteredAndExited | NSTrackingMouseMoved | NSTrackingActiveAlways;
  [self addTrackingArea:[[NSTrackingArea alloc] initWithRect:self.bounds
                                                     options:options
                                                       owner:self
                                                    userInfo:nil]];
}

// Where on the screen an event was, which the event alone knows: a drag may move the window, and taken from
// the window's place the pointer's would tremble. Press and drag have it from the same source, so that the
// way between them is none that the pointer did not go.
- (pellar::ScreenPoint)screenLocationOf:(NSEvent*)event {
  const CGEventRef native = event.CGEvent;
  if (native == nullptr) {
    return pellar::fromNSPoint<pellar::ScreenSpace>(
        [self.window convertPointToScreen:event.locationInWindow]);
  }
  const CGPoint place = CGEventGetUnflippedLocation(native);
  return {place.x, place.y};
}

- (MouseEvent)mouseEventOf:(NSEvent*)event {
  MouseEvent mouse;
  mouse.location = pellar::fromNSPoint<pellar::ViewSpace>([self convertPoint:event.locationInWindow
                                                                    fromView:nil]);
  mouse.screenLocation = [self screenLocationOf:event];
  mouse.control = (event.modifierFlags & NSEventModifierFlagControl) != 0;
  return mouse;
}

// Asking a moving mouse for its click count raises an exception.
- (MouseEvent)pressEventOf:(NSEvent*)event {
  MouseEvent mouse = [self mouseEventOf:event];
  mouse.clickCount = static_cast<int>(event.clickCount);
  return mouse;
}

// AppKit says so when the pointer crosses the edge, not when the view comes up under it.
- (void)pointerComesIn {
  [self tellLeftScreen];
  if (_view != nullptr && !std::exchange(_pointerInside, YES)) _view->mouseEntered();
}

// Nor does it say that the pointer left when the window did.
- (void)leaveScreen {
  if (!_pointerInside || std::exchange(_leftScreen, YES)) return;
  __weak HostedView* gone = self;
  pellar::performNextTurn(^{
    [gone tellLeftScreen];
  });
}

- (void)tellLeftScreen {
  if (_leftScreen) [self pointerLeaves];
}

- (void)pointerLeaves {
  _leftScreen = NO;
  if (std::exchange(_pointerInside, NO) && _view != nullptr) _view->mouseExited();
}

// An event that comes after the panel left the screen means nothing there any more.
- (BOOL)takesPointer {
  if (!self.window.visible) return NO;
  [self pointerComesIn];
  // The view may have taken its panel off the screen, or itself out of it.
  return self.window.visible && _view != nullptr;
}

- (void)mouseDown:(NSEvent*)event {
  if (![self takesPointer]) return;
  MouseEvent mouse = [self pressEventOf:event];
  // AppKit counts on from a press that a control in the view took.
  if (event.timestamp - std::exchange(_lastPress, event.timestamp) > NSEvent.doubleClickInterval)
    mouse.clickCount = 1;
  _view->mouseDown(mouse);
}

- (void)mouseDragged:(NSEvent*)event {
  if (_view != nullptr) _view->mouseDragged([self pressEventOf:event]);
}

- (void)mouseUp:(NSEvent*)event {
  if (_view != nullptr) _view->mouseUp([self pressEventOf:event]);
}

- (void)rightMouseDown:(NSEvent*)event {
  if ([self takesPointer]) _view->rightMouseDown([self pressEventOf:event]);
}

// Every button but the first two; the port speaks of the middle one.
- (void)otherMouseDown:(NSEvent*)event {
  if ([self takesPointer] && event.buttonNumber == 2) _view->otherMouseDown([self pressEventOf:event]);
}

- (void)mouseEntered:(NSEvent*)event {
  [self takesPointer];
}

- (void)mouseMoved:(NSEvent*)event {
  if ([self takesPointer]) _view->mouseMoved([self mouseEventOf:event]);
}

- (void)mouseExited:(NSEvent*)event {
  [self pointerLeaves];
}

- (BOOL)isAccessibilityElement {
  return YES;
}

- (NSAccessibilityRole)accessibilityRole {
  return NSAccessibilityGroupRole;
}

- (NSString*)accessibilityLabel {
  return _view != nullptr ? pellar::toNSString(_view->accessibleElement().name) : nil;
}

- (NSString*)accessibilityHelp {
  return _view != nullptr ? pellar::toNSString(_view->accessibleElement().help) : nil;
}

- (NSArray*)accessibilityChildren {
  return [_accessible children];
}

- (id)accessibilityHitTest:(NSPoint)point {
  id element = [_accessible elementAt:point];
  return element != nil ? element : self;
}

- (void)accessibleElementChanged {
  [_accessible noteChange];
}

- (void)performSoon:(pellar::AccessibleAction)action on:(const std::string&)identifier {
  __weak HostedView* weak = self;
  const std::string wanted = identifier;
  pellar::performNextTurn(^{
    [weak perform:action on:wanted];
  });
}

- (BOOL)takesAccessiblePress {
  return _view != nullptr && self.window.visible && NSApp.modalWindow == nil;
}

- (void)perform:(pellar::AccessibleAction)action on:(const std::string&)identifier {
  if (![self takesAccessiblePress]) return;
  const pellar::AccessibleElement whole = _view->accessibleElement();
  const pellar::AccessibleElement* target = whole.find(identifier);
  if (target == nullptr) return;
  const NSRect place = [self convertRect:pellar::toNSRect(target->frame) toView:nil];
  const NSPoint middle = NSMakePoint(NSMidX(place), NSMidY(place));
  if (self.onAccessiblePress != nil)
    self.onAccessiblePress(
        pellar::fromNSPoint<pellar::ScreenSpace>([self.window convertPointToScreen:middle]));
  // A monitor may have put the panel away.
  if ([self takesAccessiblePress]) _view->perform(action, identifier);
}

- (NSDragOperation)draggingEntered:(id<NSDraggingInfo>)sender {
  return [self draggingUpdated:sender];
}

- (NSDragOperation)draggingUpdated:(id<NSDraggingInfo>)sender {
  if (_view != nullptr && self.window.visible)
    _view->draggingUpdated(pellar::fromNSPoint<pellar::ViewSpace>([self convertPoint:sender.draggingLocation
                                                                            fromView:nil]));
  return NSDragOperationNone;
}

- (void)draggingExited:(id<NSDraggingInfo>)sender {
  if (_view != nullptr) _view->draggingExited();
}

// Let go of over the view; AppKit sends this in place of the leaving.
- (void)draggingEnded:(id<NSDraggingInfo>)sender {
  [self draggingExited:sender];
}

@end
