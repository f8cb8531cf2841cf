#import <AppKit/AppKit.h>
#include <ApplicationServices/ApplicationServices.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/mac/system/CFRef.h"
#include "platform/mac/system/Conversions.h"
#include "tests/platform/mac/PostedEvents.h"

// A user's eyes and hands for scripts. Places are Accessibility's, y downward from the top of the first
// screen.
//   windows OWNER        its windows on the screen, the frontmost first, a line each: LAYER X Y WIDTH HEIGHT
//   role X Y             the role and the subrole of what is there, for Accessibility
//   move X Y             click X Y             right-click X Y
//   key CODE [command]   type TEXT

namespace {

using pellar::CFRef;
using pellar::ScreenPoint;

int numberIn(NSDictionary<NSString*, id>* window, CFStringRef key) {
  return [window[(__bridge NSString*)key] intValue];
}

void listWindows(const std::string& owner) {
  NSArray* windows = CFBridgingRelease(CGWindowListCopyWindowInfo(
      kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements, kCGNullWindowID));
  for (NSDictionary<NSString*, id>* window in windows) {
    NSString* name = window[(__bridge NSString*)kCGWindowOwnerName];
    CGRect bounds{};
    NSDictionary* given = window[(__bridge NSString*)kCGWindowBounds];
    if (pellar::fromNSString(name) != owner ||
        !CGRectMakeWithDictionaryRepresentation((__bridge CFDictionaryRef)given, &bounds))
      continue;
    std::printf("%d %.0f %.0f %.0f %.0f\n", numberIn(window, kCGWindowLayer), bounds.origin.x,
                bounds.origin.y, bounds.size.width, bounds.size.height);
  }
}

std::string attribute(AXUIElementRef element, CFStringRef name) {
  CFTypeRef copied = nullptr;
  AXUIElementCopyAttributeValue(element, name, &copied);
  const auto value = CFRef<CFTypeRef>::adopt(copied);
  if (!value || CFGetTypeID(value.get()) != CFStringGetTypeID()) return "-";
  return pellar::fromNSString((__bridge NSString*)value.get());
}

void tellRole(float x, float y) {
  const auto system = CFRef<AXUIElementRef>::adopt(AXUIElementCreateSystemWide());
  AXUIElementRef copied = nullptr;
  AXUIElementCopyElementAtPosition(system.get(), x, y, &copied);
  const auto element = CFRef<AXUIElementRef>::adopt(copied);
  if (!element) return;
  std::printf("%s %s\n", attribute(element.get(), kAXRoleAttribute).c_str(),
              attribute(element.get(), kAXSubroleAttribute).c_str());
}

int usage() {
  std::fputs("usage: mac_hands windows OWNER | role X Y | move X Y | click X Y | right-click X Y | key CODE "
             "[command] | "
             "type TEXT\n",
             stderr);
  return EXIT_FAILURE;
}

// False when it is not understood.
bool play(const std::vector<std::string>& words) {
  pellar::contract::PostedEvents events;
  const std::string& deed = words[0];
  const auto number = [&](std::size_t index) { return std::atof(words[index].c_str()); };
  if (deed == "type" && words.size() == 2) {
    events.type(words[1]);
  } else if (deed == "key" && (words.size() == 2 || words.size() == 3)) {
    events.pressKey(static_cast<std::uint16_t>(number(1)),
                    words.size() == 3 ? kCGEventFlagMaskCommand : CGEventFlags{});
  } else if (words.size() == 3) {
    const ScreenPoint place{number(1), NSMaxY(NSScreen.screens.firstObject.frame) - number(2)};
    if (deed == "move") {
      events.movePointer(place);
    } else if (deed == "click") {
      events.pressLeft(place);
      events.releaseLeft();
    } else if (deed == "right-click") {
      events.clickRight(place);
    } else {
      return false;
    }
  } else {
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  @autoreleasepool {
    const std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty()) return usage();
    // What asks for screens and positions needs the window server.
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyProhibited];
    if (words[0] == "windows" && words.size() == 2) {
      listWindows(words[1]);
    } else if (words[0] == "role" && words.size() == 3) {
      tellRole(std::strtof(words[1].c_str(), nullptr), std::strtof(words[2].c_str(), nullptr));
    } else if (!play(words)) {
      return usage();
    }
  }
  return EXIT_SUCCESS;
}
