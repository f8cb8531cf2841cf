#pragma once

#import <AppKit/AppKit.h>

// The dark, translucent, rounded ground of a panel. Flipped.
@interface GlassView : NSVisualEffectView

- (instancetype)initWithFrame:(NSRect)frame NS_DESIGNATED_INITIALIZER;
// Never made from an archive: fatal.
- (instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;

@end
