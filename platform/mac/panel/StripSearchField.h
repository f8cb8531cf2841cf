#pragma once

#import <AppKit/AppKit.h>

// A search field that tells of a click before it takes the keyboard.
@interface StripSearchField : NSSearchField

@property(nonatomic, copy) void (^onActivate)(void);

@end
