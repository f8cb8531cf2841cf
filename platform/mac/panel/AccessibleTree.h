#pragma once

#import <AppKit/AppKit.h>

@class HostedView;

// What a `HostedView` shows, as AppKit tells it to VoiceOver and its like: an element for each that the view
// draws, and the native control for each that is one. Made when somebody first asks; before that a change
// costs nothing.
@interface AccessibleTree : NSObject

// `host` is not owned.
- (instancetype)initWithHost:(HostedView*)host;

// The elements at the top, as they are now.
- (NSArray*)children;
// The deepest element at a point of the screen; nil where there is none.
- (id)elementAt:(NSPoint)point;
// The view's description may be another one now.
- (void)noteChange;

@end
