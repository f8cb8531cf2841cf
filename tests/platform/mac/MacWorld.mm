#include "tests/platform/mac/MacWorld.h"

#import <AppKit/AppKit.h>

#include <cmath>
#include <stdexcept>
#include <utility>

#include "platform/MainLoop.h"
#include "platform/Workspace.h"
#include "platform/mac/system/Conversions.h"
#include "platform/mac/system/ObservedNotification.h"

namespace pellar::contract {
namespace {

constexpr std::uint16_t enterKey = 36;
constexpr std::uint16_t tabKey = 48;
constexpr std::uint16_t escapeKey = 53;
constexpr std::uint16_t downKey = 125;
constexpr std::uint16_t upKey = 126;

std::string numbers(std::initializer_list<double> values) {
  std::string text;
  for (const double value : values) text += std::to_string(value) + " ";
  return text;
}

// The window of this program on top at a point of the screen.
NSWindow* windowAt(ScreenPoint point) {
  NSWindow* found = nil;
  for (NSWindow* window in NSApp.windows) {
    if (window.visible && NSPointInRect(toNSPoint(point), window.frame) &&
        (found == nil || window.level > found.level))
      found = window;
  }
  return found;
}

}  // namespace

// AppKit takes the events of its windows from the loop itself; the run loop alone delivers none.
bool MacWorld::wait(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    @autoreleasepool {
      // Some conditions come true outside the loop, with no event of it.
      NSEvent* event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                          untilDate:[NSDate dateWithTimeIntervalSinceNow:0.005]
                                             inMode:NSDefaultRunLoopMode
                                            dequeue:YES];
      if (event != nil) [NSApp sendEvent:event];
    }
  }
  return true;
}

ProcessId MacWorld::launch(const std::string& name) {
  auto program = std::make_unique<ProgramProcess>(name);
  const ProcessId pid = program->pid();
  programs_.emplace(pid, std::move(program));
  return pid;
}

ProcessId MacWorld::launchCold(const std::string& name, std::chrono::seconds duration) {
  auto program = std::make_unique<ProgramProcess>(name, duration);
  const ProcessId pid = program->pid();
  programs_.emplace(pid, std::move(program));
  return pid;
}

void MacWorld::terminate(ProcessId application) {
  programs_.at(application)->quit();
}

std::string MacWorld::tell(WorldWindow window, const std::string& command, const std::string& rest) {
  const auto number = static_cast<std::size_t>(window);
  return programs_.at(owners_.at(number))->tell(command + " " + std::to_string(number) + " " + rest);
}

// Since macOS 14 an application that brings itself to the front only asks for it. Accessibility does it as
// the user's click would.
void MacWorld::bringToFront(ProcessId application) {
  const auto element = CFRef<AXUIElementRef>::adopt(AXUIElementCreateApplication(application));
  AXUIElementSetAttributeValue(element.get(), kAXFrontmostAttribute, kCFBooleanTrue);
}

WorldWindow MacWorld::open(ProcessId application, const std::string& title, const AxRect& frame) {
  owners_.push_back(application);
  const auto window = static_cast<WorldWindow>(owners_.size() - 1);
  tell(window, "open", numbers({frame.x, frame.y, frame.width, frame.height}) + title);
  bringToFront(application);
  return window;
}

void MacWorld::retitle(WorldWindow window, const std::string& title) {
  tell(window, "retitle", title);
}

void MacWorld::moveTo(WorldWindow window, AxPoint origin) {
  tell(window, "move", numbers({origin.x, origin.y}));
}

void MacWorld::minimise(WorldWindow window) {
  tell(window, "minimise");
}

void MacWorld::restore(WorldWindow window) {
  tell(window, "restore");
}

void MacWorld::destroy(WorldWindow window) {
  tell(window, "close");
}

void MacWorld::focus(WorldWindow window) {
  tell(window, "focus");
  bringToFront(owners_.at(static_cast<std::size_t>(window)));
}

void MacWorld::hang(ProcessId application, int seconds) {
  programs_.at(application)->tell("hang " + std::to_string(seconds));
}

void MacWorld::represent(WorldWindow window, const std::string& path) {
  tell(window, "document", path);
}

void MacWorld::edit(WorldWindow window) {
  tell(window, "edited", "1");
}

int MacWorld::saves(WorldWindow window) {
  return std::stoi(tell(window, "saved"));
}

void MacWorld::pressEscape() {
  events_.pressKey(escapeKey);
}

void MacWorld::press(Key key) {
  switch (key) {
    case Key::up:
      return events_.pressKey(upKey);
    case Key::down:
      return events_.pressKey(downKey);
    case Key::enter:
      return events_.pressKey(enterKey);
  }
}

void MacWorld::pressTab(const HeldKeys& held) {
  events_.pressKey(tabKey, (held.shift ? kCGEventFlagMaskShift : CGEventFlags{}) |
                               (held.control ? kCGEventFlagMaskControl : CGEventFlags{}) |
                               (held.command ? kCGEventFlagMaskCommand : CGEventFlags{}));
}

int MacWorld::tabsReceived(WorldWindow window) {
  return std::stoi(tell(window, "tabs"));
}

// The menu reads the keys in its own loop, which begins right after this is told.
void MacWorld::workNextMenu(std::optional<int> place) {
  deed_ = observeNotification(NSNotificationCenter.defaultCenter, NSMenuDidBeginTrackingNotification, nil,
                              [this, place](NSNotification*) {
                                deed_.cancel();
                                if (!place) return pressEscape();
                                for (int step = 0; step <= *place; ++step) press(Key::down);
                                press(Key::enter);
                              });
}

// The program comes to the front before it asks, as it does for a user; the question is then the key window.
void MacWorld::answerNextQuestion(std::optional<std::string> text) {
  platform_.workspace.activateIgnoringOtherApps();
  deed_ = platform_.mainLoop.every(std::chrono::milliseconds(10), [this, text = std::move(text)] {
    NSWindow* question = NSApp.modalWindow;
    if (question == nil || !question.keyWindow || !NSApp.active) return;
    deed_.cancel();
    if (!text) return pressEscape();
    type(*text);
    press(Key::enter);
  });
}

// The pasteboard is the user's; main.mm puts back what was on it.
std::string MacWorld::pasted() {
  return fromNSString([NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeString]);
}

// A picture of the one window, which takes no permission when it is ours. What shows through it is not in it.
Color MacWorld::colorAt(ScreenPoint point) {
  NSWindow* window = windowAt(point);
  if (window == nil) throw std::runtime_error("no panel stands there");
  const double height = NSMaxY(NSScreen.screens.firstObject.frame);
  // The pixel that holds the point, at any scale.
  const CGRect place = CGRectMake(std::floor(point.x), height - std::floor(point.y) - 1, 1, 1);
  const auto image = CFRef<CGImageRef>::adopt(CGWindowListCreateImage(
      place, kCGWindowListOptionIncludingWindow, static_cast<CGWindowID>(window.windowNumber),
      kCGWindowImageBoundsIgnoreFraming | kCGWindowImageNominalResolution));
  if (!image) throw std::runtime_error("no picture of the panel");
  std::uint8_t pixel[4] = {};
  const auto space = CFRef<CGColorSpaceRef>::adopt(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
  const auto context = CFRef<CGContextRef>::adopt(
      CGBitmapContextCreate(pixel, 1, 1, 8, 4, space.get(), kCGImageAlphaPremultipliedLast));
  CGContextDrawImage(context.get(), CGRectMake(0, 0, 1, 1), image.get());
  return {pixel[0] / 255.0, pixel[1] / 255.0, pixel[2] / 255.0, 1, std::nullopt};
}

std::unique_ptr<World> makeWorld() {
  return std::make_unique<MacWorld>();
}

}  // namespace pellar::contract
