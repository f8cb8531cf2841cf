#import <AppKit/AppKit.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

// An application for the tests, which does what it is told by lines on its standard input, in the order in
// which they come, and answers each with one line. Ids of windows are the teller's own; frames are those of
// Accessibility, y downward from the top of the first screen.
//   open ID X Y WIDTH HEIGHT TITLE   a document's window, in front, with the keyboard
//   retitle ID TITLE                 document ID PATH             edited ID 0|1
//   move ID X Y                      minimise ID                  restore ID
//   close ID                         focus ID                     quit
//   tabs ID      answers how often the window's application has received Tab while the window had the
//   keyboard saved ID     answers how often the window was saved by the File menu hang SECONDS answers first,
//   and nothing else for so long
// With the argument "--cold SECONDS" it takes so long to start. Its first line is "ready".

namespace {

constexpr unsigned short tabKey = 48;

NSString* text(const std::string& utf8) {
  NSString* made = [NSString stringWithUTF8String:utf8.c_str()];
  return made != nil ? made : @"";
}

// The rest of a line, without the blank that ends what was read before.
NSString* restOf(std::istringstream& line) {
  std::string rest;
  std::getline(line >> std::ws, rest);
  return text(rest);
}

void answer(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

// Nothing is answered meanwhile, to the system either.
void blockMainThread(double seconds) {
  [NSThread sleepForTimeInterval:seconds];
}

NSPoint fromTopLeft(double x, double y) {
  return NSMakePoint(x, NSMaxY(NSScreen.screens.firstObject.frame) - y);
}

}  // namespace

@interface ProgramWindow : NSWindow
@property(nonatomic) int tabs;
@property(nonatomic) int saves;
@end

@implementation ProgramWindow

- (void)saveDocument:(id)sender {
  self.saves += 1;
  self.documentEdited = NO;
}

// As a document does: what is not changed is not saved.
- (BOOL)validateMenuItem:(NSMenuItem*)item {
  return item.action == @selector(saveDocument:) ? self.documentEdited : [super validateMenuItem:item];
}

@end

// Counts what the system delivers, before a window makes something of it.
@interface ProgramApplication : NSApplication
@end

@implementation ProgramApplication

- (void)sendEvent:(NSEvent*)event {
  if (event.type == NSEventTypeKeyDown && event.keyCode == tabKey &&
      [event.window isKindOfClass:ProgramWindow.class]) {
    static_cast<ProgramWindow*>(event.window).tabs += 1;
    return;
  }
  [super sendEvent:event];
}

@end

@interface ProgramDelegate : NSObject <NSApplicationDelegate>
@end

@implementation ProgramDelegate {
  NSMutableDictionary<NSNumber*, ProgramWindow*>* _windows;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  _windows = [NSMutableDictionary dictionary];
  [NSThread detachNewThreadWithBlock:^{
    for (std::string line; std::getline(std::cin, line);) {
      [self performSelectorOnMainThread:@selector(obey:) withObject:text(line) waitUntilDone:NO];
    }
    // Whoever started it is gone.
    std::exit(0);
  }];
  answer("ready");
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
  return YES;
}

- (void)open:(int)identifier frame:(NSRect)frame title:(NSString*)title {
  ProgramWindow* window =
      [[ProgramWindow alloc] initWithContentRect:NSZeroRect
                                       styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                 NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
  window.releasedWhenClosed = NO;
  window.restorable = NO;
  window.tabbingMode = NSWindowTabbingModeDisallowed;
  window.animationBehavior = NSWindowAnimationBehaviorNone;
  window.title = title;
  [window setFrame:frame display:YES];
  _windows[@(identifier)] = window;
  [self focus:window];
}

- (void)focus:(NSWindow*)window {
  [window makeKeyAndOrderFront:nil];
  [NSApp activateIgnoringOtherApps:YES];
}

- (void)obey:(NSString*)told {
  std::istringstream line(told.UTF8String);
  std::string command;
  int identifier = 0;
  double x = 0;
  double y = 0;
  line >> command;
  if (command == "quit") {
    answer("done");
    [NSApp terminate:nil];
    return;
  }
  if (command == "hang") {
    line >> x;
    answer("done");
    blockMainThread(x);
    return;
  }
  line >> identifier;
  ProgramWindow* window = _windows[@(identifier)];
  if (command == "open") {
    double width = 0;
    double height = 0;
    line >> x >> y >> width >> height;
    const NSPoint top = fromTopLeft(x, y);
    [self open:identifier frame:NSMakeRect(top.x, top.y - height, width, height) title:restOf(line)];
  } else if (command == "retitle") {
    window.title = restOf(line);
  } else if (command == "document") {
    window.representedURL = [NSURL fileURLWithPath:restOf(line)];
  } else if (command == "edited") {
    line >> x;
    window.documentEdited = x != 0;
  } else if (command == "move") {
    line >> x >> y;
    [window setFrameTopLeftPoint:fromTopLeft(x, y)];
  } else if (command == "minimise") {
    [window miniaturize:nil];
  } else if (command == "restore") {
    [window deminiaturize:nil];
  } else if (command == "close") {
    [window close];
    [_windows removeObjectForKey:@(identifier)];
  } else if (command == "focus") {
    [self focus:window];
  } else if (command == "tabs") {
    return answer(std::to_string(window.tabs));
  } else if (command == "saved") {
    return answer(std::to_string(window.saves));
  } else {
    return answer("unknown");
  }
  answer("done");
}

@end

namespace {

NSMenu* fileMenu() {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:@"File"];
  // To the first responder that has it: the window with the keyboard.
  [menu addItemWithTitle:@"Save" action:@selector(saveDocument:) keyEquivalent:@"s"];
  NSMenuItem* recent = [menu addItemWithTitle:@"Open Recent" action:nil keyEquivalent:@""];
  recent.submenu = [[NSMenu alloc] initWithTitle:@"Open Recent"];
  [recent.submenu addItemWithTitle:@"Clear Menu" action:nil keyEquivalent:@""];
  [menu addItem:NSMenuItem.separatorItem];
  [menu addItemWithTitle:@"Close" action:@selector(performClose:) keyEquivalent:@"w"];
  return menu;
}

NSMenu* menuBar() {
  NSMenu* bar = [[NSMenu alloc] initWithTitle:@""];
  NSMenu* application = [[NSMenu alloc] initWithTitle:@""];
  [application addItemWithTitle:@"Quit" action:@selector(terminate:) keyEquivalent:@"q"];
  [bar addItemWithTitle:@"" action:nil keyEquivalent:@""].submenu = application;
  [bar addItemWithTitle:@"File" action:nil keyEquivalent:@""].submenu = fileMenu();
  return bar;
}

// NSApplication holds its delegate weakly.
ProgramDelegate* delegate;

}  // namespace

int main(int argc, char** argv) {
  @autoreleasepool {
    // A cold start: the process is there, and answers nothing yet.
    if (argc == 3 && std::string(argv[1]) == "--cold") blockMainThread(std::atof(argv[2]));
    NSApplication* application = ProgramApplication.sharedApplication;
    delegate = [[ProgramDelegate alloc] init];
    application.delegate = delegate;
    [application setActivationPolicy:NSApplicationActivationPolicyRegular];
    application.mainMenu = menuBar();
    [application run];
  }
  return 0;
}
