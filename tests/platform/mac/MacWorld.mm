#include "tests/platform/mac/MacWorld.h"

#import <AppKit/AppKit.h>

#include <stdexcept>

#include "platform/mac/system/Conversions.h"

namespace pellar::contract {
namespace {

// Reached only by a test that main.mm's filter should have left out.
[[noreturn]] void needsAUser() {
  throw std::logic_error("this takes a user in front of the Mac");
}

}  // namespace

bool MacWorld::wait(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    @autoreleasepool {
      // Some conditions come true outside the loop, with no event of it.
      CFRunLoopRunInMode(kCFRunLoopDefaultMode, 0.005, true);
    }
  }
  return true;
}

ProcessId MacWorld::launch(const std::string& /*name*/) {
  needsAUser();
}

void MacWorld::terminate(ProcessId /*application*/) {
  needsAUser();
}

WorldWindow MacWorld::open(ProcessId /*application*/, const std::string& /*title*/, const AxRect& /*frame*/) {
  needsAUser();
}

void MacWorld::retitle(WorldWindow /*window*/, const std::string& /*title*/) {
  needsAUser();
}

void MacWorld::moveTo(WorldWindow /*window*/, AxPoint /*origin*/) {
  needsAUser();
}

void MacWorld::minimise(WorldWindow /*window*/) {
  needsAUser();
}

void MacWorld::restore(WorldWindow /*window*/) {
  needsAUser();
}

void MacWorld::destroy(WorldWindow /*window*/) {
  needsAUser();
}

void MacWorld::focus(WorldWindow /*window*/) {
  needsAUser();
}

void MacWorld::movePointer(ScreenPoint /*point*/) {
  needsAUser();
}

void MacWorld::pressLeft(ScreenPoint /*point*/) {
  needsAUser();
}

void MacWorld::releaseLeft() {
  needsAUser();
}

void MacWorld::clickRight(ScreenPoint /*point*/) {
  needsAUser();
}

void MacWorld::clickMiddle(ScreenPoint /*point*/) {
  needsAUser();
}

void MacWorld::type(std::string_view /*text*/) {
  needsAUser();
}

void MacWorld::pressEscape() {
  needsAUser();
}

void MacWorld::press(Key /*key*/) {
  needsAUser();
}

void MacWorld::turnWheel(ScreenPoint /*point*/, int /*notches*/) {
  needsAUser();
}

void MacWorld::pressTab(const HeldKeys& /*held*/) {
  needsAUser();
}

int MacWorld::tabsReceived(WorldWindow /*window*/) {
  needsAUser();
}

void MacWorld::workNextMenu(std::optional<int> /*place*/) {
  needsAUser();
}

void MacWorld::answerNextQuestion(std::optional<std::string> /*text*/) {
  needsAUser();
}

// The pasteboard is the user's; main.mm puts back what was on it.
std::string MacWorld::pasted() {
  return fromNSString([NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeString]);
}

Color MacWorld::colorAt(ScreenPoint /*point*/) {
  needsAUser();
}

std::unique_ptr<World> makeWorld() {
  return std::make_unique<MacWorld>();
}

}  // namespace pellar::contract
