#include "platform/mac/applications/MacScriptRunner.h"

#import <Foundation/Foundation.h>

#include "platform/mac/system/Conversions.h"

namespace pellar {
namespace {

std::optional<ScriptDescriptor> fromDescriptor(NSAppleEventDescriptor* descriptor) {
  switch (descriptor.descriptorType) {
    case typeNull:
      return std::nullopt;
    case typeSInt16:
    case typeSInt32:
      return ScriptDescriptor{descriptor.int32Value};
    case typeAEList: {
      std::vector<ScriptDescriptor> items;
      for (NSInteger index = 1; index <= descriptor.numberOfItems; ++index) {
        NSAppleEventDescriptor* item = [descriptor descriptorAtIndex:index];
        // An item without a text keeps its place as an empty one.
        auto value = item != nil ? fromDescriptor(item) : std::nullopt;
        items.push_back(value ? *std::move(value) : ScriptDescriptor{std::string()});
      }
      return ScriptDescriptor{std::move(items)};
    }
    default: {
      NSString* text = descriptor.stringValue;
      if (text == nil) return std::nullopt;
      return ScriptDescriptor{fromNSString(text)};
    }
  }
}

}  // namespace

ScriptResult MacScriptRunner::run(const std::string& source) {
  @autoreleasepool {
    ScriptResult result;
    NSAppleScript* script = [[NSAppleScript alloc] initWithSource:toNSString(source)];
    if (script == nil) return result;
    NSDictionary<NSString*, id>* error = nil;
    NSAppleEventDescriptor* descriptor = [script executeAndReturnError:&error];
    if (error != nil) result.error = fromNSString(error.description);
    // Declared never nil, and nil after a failure.
    if (error == nil && descriptor != nil) result.descriptor = fromDescriptor(descriptor);
    return result;
  }
}

}  // namespace pellar
