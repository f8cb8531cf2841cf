#include "platform/mac/desktop/MacStatusBar.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#import "platform/mac/popups/NativeMenu.h"
#include "platform/mac/system/Conversions.h"

// Fills a menu just before it opens.
@interface MenuFiller : NSObject <NSMenuDelegate>

- (instancetype)initWithMenu:(std::function<pellar::Menu()>)menu;
// From now on nothing is asked any more, and nothing that was chosen is run.
- (void)end;

@end

@implementation MenuFiller {
  std::shared_ptr<std::function<pellar::Menu()>> _menu;
}

- (instancetype)initWithMenu:(std::function<pellar::Menu()>)menu {
  self = [super init];
  if (self != nil) _menu = std::make_shared<std::function<pellar::Menu()>>(std::move(menu));
  return self;
}

- (void)end {
  *_menu = nullptr;
}

- (void)menuNeedsUpdate:(NSMenu*)menu {
  if (!*_menu) return;
  const std::weak_ptr<std::function<pellar::Menu()>> asked = _menu;
  [menu removeAllItems];
  NSMenu* filled = pellar::nativeMenu((*_menu)(), [asked](const std::function<void()>& handler) {
    pellar::performAfterTracking(^{
      const auto menuNow = asked.lock();
      if (handler && menuNow && *menuNow) handler();
    });
  });
  for (NSMenuItem* item in [filled.itemArray copy]) {
    [filled removeItem:item];
    [menu addItem:item];
  }
}

@end

namespace pellar {
namespace {

// A vector image from the program's resources; nil when it is missing or unreadable.
NSImage* templateImage(const StatusItemLook& look) {
  NSURL* place = [NSBundle.mainBundle URLForResource:toNSString(look.imageName) withExtension:@"pdf"];
  NSImage* image = place != nil ? [[NSImage alloc] initWithContentsOfURL:place] : nil;
  if (image == nil || !image.valid) return nil;
  [image setTemplate:YES];
  image.accessibilityDescription = NSProcessInfo.processInfo.processName;
  const NSSize size = image.size;
  if (size.height > 0) {
    image.size = NSMakeSize(size.width * look.imageHeight / size.height, look.imageHeight);
  }
  return image;
}

}  // namespace

Subscription MacStatusBar::addItem(const StatusItemLook& look, std::function<Menu()> menu) {
  NSStatusItem* item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
  NSImage* image = templateImage(look);
  if (image != nil) {
    item.button.image = image;
  } else {
    item.button.title = drawnText(look.title);
  }
  MenuFiller* filler = [[MenuFiller alloc] initWithMenu:std::move(menu)];
  NSMenu* native = [[NSMenu alloc] initWithTitle:@""];
  native.autoenablesItems = NO;
  // A menu holds its delegate weakly; the subscription keeps it.
  native.delegate = filler;
  item.menu = native;
  menu_ = native;
  return Subscription([item, filler] {
    [filler end];
    [NSStatusBar.systemStatusBar removeStatusItem:item];
  });
}

void MacStatusBar::openMenu() {
  NSMenu* menu = menu_;
  [menu popUpMenuPositioningItem:nil atLocation:NSEvent.mouseLocation inView:nil];
}

}  // namespace pellar
