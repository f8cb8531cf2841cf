#include "platform/mac/system/MacApplication.h"

#import <AppKit/AppKit.h>

#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

std::optional<std::string> bundleText(NSString* key) {
  const id value = [NSBundle.mainBundle objectForInfoDictionaryKey:key];
  if (![value isKindOfClass:NSString.class]) return std::nullopt;
  return fromNSString(static_cast<NSString*>(value));
}

}  // namespace

void MacApplication::terminate() {
  [NSApplication.sharedApplication terminate:nil];
}

BundleInfo macBundleInfo() {
  return {.shortVersion = bundleText(@"CFBundleShortVersionString"),
          .version = bundleText(@"CFBundleVersion"),
          .webSite = bundleText(@"PellarWebSite").value_or(std::string())};
}

}  // namespace pellar
