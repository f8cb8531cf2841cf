#import "platform/mac/popups/NativeMenu.h"

#include <string>
#include <variant>

#include "core/CutText.h"
#include "platform/mac/system/Conversions.h"

@implementation ClosureItem {
  void (^_handler)(void);
}

- (instancetype)initWithTitle:(NSString*)title handler:(void (^)(void))handler {
  self = [super initWithTitle:title action:@selector(fire) keyEquivalent:@""];
  if (self != nil) {
    _handler = [handler copy];
    self.target = self;
  }
  return self;
}

- (void)fire {
  if (_handler != nil) _handler();
}

@end

namespace {

NSString* shownTitle(const std::string& title) {
  return pellar::drawnText(pellar::CutText::inTheMiddle(title, pellar::longestRow));
}

NSImage* swatch(NSColor* color) {
  return [NSImage imageWithSize:NSMakeSize(12, 12)
                        flipped:NO
                 drawingHandler:^BOOL(NSRect bounds) {
                   [color setFill];
                   [[NSBezierPath bezierPathWithOvalInRect:bounds] fill];
                   return YES;
                 }];
}

NSMenuItem* nativeItem(const pellar::ClosureItem& item, const pellar::MenuChoice& chosen) {
  NSString* title = shownTitle(item.title);
  const auto handler = item.handler;
  const auto choice = chosen;
  ClosureItem* native = [[ClosureItem alloc] initWithTitle:title
                                                   handler:^{
                                                     choice(handler);
                                                   }];
  native.enabled = item.enabled;
  native.state = item.checked ? NSControlStateValueOn : NSControlStateValueOff;
  if (item.swatch) native.image = swatch(pellar::toNSColor(*item.swatch));
  if (item.prominent) {
    native.attributedTitle = [[NSAttributedString alloc]
        initWithString:title
            attributes:@{
              NSFontAttributeName : [NSFont boldSystemFontOfSize:NSFont.systemFontSize],
              NSForegroundColorAttributeName : NSColor.controlAccentColor
            }];
  }
  return native;
}

}  // namespace

// Tracking has a mode of its own (NSEventTrackingRunLoopMode); a question that is open has another, in which
// "Quit" is heard as well.
void pellar::performAfterTracking(void (^block)(void)) {
  NSArray<NSRunLoopMode>* modes = @[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ];
  CFRunLoopPerformBlock(CFRunLoopGetMain(), (__bridge CFArrayRef)modes, block);
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

NSMenu* pellar::nativeMenu(const Menu& menu, const MenuChoice& chosen) {
  NSMenu* native = [[NSMenu alloc] initWithTitle:@""];
  native.autoenablesItems = NO;
  // AppKit adds items of other programs to context menus otherwise.
  native.allowsContextMenuPlugIns = NO;
  for (const auto& item : menu) {
    if (std::holds_alternative<MenuSeparator>(item)) {
      [native addItem:NSMenuItem.separatorItem];
    } else if (const auto* submenu = std::get_if<Submenu>(&item)) {
      NSMenuItem* parent = [[NSMenuItem alloc] initWithTitle:shownTitle(submenu->title)
                                                      action:nil
                                               keyEquivalent:@""];
      parent.submenu = nativeMenu(submenu->items, chosen);
      [native addItem:parent];
    } else {
      [native addItem:nativeItem(std::get<ClosureItem>(item), chosen)];
    }
  }
  return native;
}
