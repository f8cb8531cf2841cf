#pragma once

#import <AppKit/AppKit.h>

// A panel that can have the keyboard although it is borderless and never makes its application active.
@interface StripPanel : NSPanel
@end
