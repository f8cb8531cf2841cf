#include "platform/mac/desktop/EditingKeys.h"

#import <AppKit/AppKit.h>

namespace pellar {

void installEditingKeys() {
  NSMenu* edit = [[NSMenu alloc] initWithTitle:@"Edit"];
  // Undo and redo are the text view's undo manager's, found along the responder chain.
  [edit addItemWithTitle:@"Undo" action:NSSelectorFromString(@"undo:") keyEquivalent:@"z"];
  [edit addItemWithTitle:@"Redo" action:NSSelectorFromString(@"redo:") keyEquivalent:@"Z"];
  [edit addItemWithTitle:@"Cut" action:@selector(cut:) keyEquivalent:@"x"];
  [edit addItemWithTitle:@"Copy" action:@selector(copy:) keyEquivalent:@"c"];
  [edit addItemWithTitle:@"Paste" action:@selector(paste:) keyEquivalent:@"v"];
  [edit addItemWithTitle:@"Select All" action:@selector(selectAll:) keyEquivalent:@"a"];
  [edit addItemWithTitle:@"Close" action:@selector(performClose:) keyEquivalent:@"w"];
  NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:@"Edit" action:nil keyEquivalent:@""];
  item.submenu = edit;
  NSMenu* main = [[NSMenu alloc] initWithTitle:@""];
  [main addItem:item];
  NSApplication.sharedApplication.mainMenu = main;
}

}  // namespace pellar
