#pragma once

#import <AppKit/AppKit.h>

#include <functional>

#include "platform/Menu.h"

// A menu item that runs a block.
@interface ClosureItem : NSMenuItem

- (instancetype)initWithTitle:(NSString*)title handler:(void (^)(void))handler;

@end

namespace pellar {

// Receives the handler of the item that the user chose.
using MenuChoice = std::function<void(const std::function<void()>& handler)>;

// A native menu of these items, with automatic enabling off. `chosen` is called inside the tracking of the
// menu.
[[nodiscard]] NSMenu* nativeMenu(const Menu& menu, const MenuChoice& chosen);

// Runs the block after the tracking of a menu in which AppKit calls, also while a question is open.
void performAfterTracking(void (^block)(void));

}  // namespace pellar
