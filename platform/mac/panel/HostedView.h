#pragma once

#import <AppKit/AppKit.h>

#include <string>

#include "platform/View.h"

// The native view of one of ours: flipped, never the first responder, and acting on the first click.
@interface HostedView : NSView

// Not owned; null while there is none.
@property(nonatomic) pellar::View* view;

// The panel was taken off the screen: the pointer is no longer in the view, which is told from the main loop,
// but before anything else that the pointer does there.
- (void)leaveScreen;

// The view's description may be another one now, or the view have come to the screen.
- (void)accessibleElementChanged;
// Has the view do it from the main loop, as a click would: not while the panel is off the screen, nor while a
// question is open.
- (void)performSoon:(pellar::AccessibleAction)action on:(const std::string&)identifier;
// Hears of that before the view does: where on the screen a click would have been.
@property(nonatomic, copy) void (^onAccessiblePress)(pellar::ScreenPoint);

@end
