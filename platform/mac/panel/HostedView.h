#pragma once

#import <AppKit/AppKit.h>

#include "platform/View.h"

// The native view of one of ours: flipped, never the first responder, and acting on the first click.
@interface HostedView : NSView

// Not owned; null while there is none.
@property(nonatomic) pellar::View* view;

// The panel was taken off the screen: the pointer is no longer in the view, which is told from the main loop,
// but before anything else that the pointer does there.
- (void)leaveScreen;

@end
