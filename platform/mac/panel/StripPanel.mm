#import "platform/mac/panel/StripPanel.h"

@implementation StripPanel

// A window without a title bar answers NO (NSWindow.h), and no text could be typed into it.
- (BOOL)canBecomeKeyWindow {
  return YES;
}

- (BOOL)canBecomeMainWindow {
  return NO;
}

@end
