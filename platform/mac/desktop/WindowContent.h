#pragma once

#import <AppKit/AppKit.h>

#include "platform/Windows.h"

// A push button that runs a block.
@interface ClosureButton : NSButton

+ (instancetype)buttonWithTitle:(NSString*)title handler:(void (^)(void))handler;

@end

namespace pellar {

// The labels of a window whose text can be changed, by their ids.
using WindowLabels = NSMutableDictionary<NSString*, NSTextField*>;

// Puts the elements of a description into a content view of its size: a column pinned to the upper edge and
// both sides, and beside it what has a frame of its own.
void fillWindow(NSView* content, const WindowDescription& description, WindowLabels* labels);

}  // namespace pellar
