#import "platform/mac/panel/GlassView.h"

#import <QuartzCore/QuartzCore.h>

namespace {

constexpr CGFloat cornerRadius = 12;

// A rounded square whose middle stretches.
NSImage* roundedMask() {
  constexpr CGFloat side = 2 * cornerRadius + 1;
  NSImage* mask = [NSImage imageWithSize:NSMakeSize(side, side)
                                 flipped:NO
                          drawingHandler:^BOOL(NSRect bounds) {
                            [NSColor.blackColor setFill];
                            [[NSBezierPath bezierPathWithRoundedRect:bounds
                                                             xRadius:cornerRadius
                                                             yRadius:cornerRadius] fill];
                            return YES;
                          }];
  mask.capInsets = NSEdgeInsetsMake(cornerRadius, cornerRadius, cornerRadius, cornerRadius);
  mask.resizingMode = NSImageResizingModeStretch;
  return mask;
}

}  // namespace

@implementation GlassView

- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  if (self != nil) {
    self.material = NSVisualEffectMaterialHUDWindow;
    self.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    self.state = NSVisualEffectStateActive;
    self.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
    self.wantsLayer = YES;
    self.layer.cornerRadius = cornerRadius;
    self.layer.masksToBounds = YES;
    self.layer.borderWidth = 1;
    self.layer.borderColor = [NSColor colorWithSRGBRed:1 green:1 blue:1 alpha:0.14].CGColor;
    // The material behind the window is drawn by the window server, which the layer's corners do not reach:
    // with less transparency or more contrast a box would show (github.com/its-ahoh/codey/issues/232). The
    // mask also shapes the window's shadow (NSVisualEffectView.h).
    self.maskImage = roundedMask();
  }
  return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
  [NSException raise:NSInternalInconsistencyException format:@"Fatal error"];
  return [super initWithCoder:coder];
}

- (BOOL)isFlipped {
  return YES;
}

@end
