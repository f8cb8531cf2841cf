#import "platform/mac/panel/StripSearchField.h"

@implementation StripSearchField

// The program is never active when the field is clicked; without this the click would be swallowed.
- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}

- (void)mouseDown:(NSEvent*)event {
  // A press that comes after its panel left the screen.
  if (!self.window.visible) return;
  if (self.onActivate != nil) self.onActivate();
  [super mouseDown:event];
}

@end
