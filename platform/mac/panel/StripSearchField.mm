#import "platform/mac/panel/StripSearchField.h"

@implementation StripSearchField

// The program is never active when the field is clicked; without this the click would be swallowed.
- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return YES;
}

// That is asked of the view under the pointer (NSView.h), which may be one of the field's own parts. While it
// is edited its panel is key, and its editor takes the mouse.
- (NSView*)hitTest:(NSPoint)point {
  NSView* hit = [super hitTest:point];
  return hit != nil && self.currentEditor == nil && ![hit isKindOfClass:NSButton.class] ? self : hit;
}

- (void)mouseDown:(NSEvent*)event {
  // A press that comes after its panel left the screen.
  if (!self.window.visible) return;
  if (self.onActivate != nil) self.onActivate();
  [super mouseDown:event];
}

@end
