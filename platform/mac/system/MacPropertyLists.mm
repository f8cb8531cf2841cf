#include "platform/mac/system/MacPropertyLists.h"

#import <Foundation/Foundation.h>

#include <string_view>
#include <system_error>
#include <utility>

#include "platform/mac/system/Conversions.h"
#include "platform/shared/documents/BinaryPropertyList.h"
#include "platform/shared/documents/XmlPropertyList.h"

namespace pellar {
namespace {

NSData* contentOf(const std::filesystem::path& file) {
  // Only a regular file: a pipe would make the reader wait for ever. Since macOS 14 the user is asked before
  // a program may look into the data of another one (NSAppDataUsageDescription in Info.plist.in), and a
  // refusal is an error like any other.
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return nil;
  const auto size = std::filesystem::file_size(file, error);
  if (error || size > MacPropertyLists::largestFile) return nil;
  NSData* data = [NSData dataWithContentsOfURL:[NSURL fileURLWithPath:toNSString(file.native())]
                                       options:NSDataReadingUncached
                                         error:nil];
  return data.length <= MacPropertyLists::largestFile ? data : nil;
}

// Neither the old text format nor XML in UTF-16 is read: nothing writes them any more, and they would have to
// be looked through in their own way.
bool isSafeToParse(std::string_view text) {
  if (text.starts_with("bplist"))
    return BinaryPropertyList::isSafeToParse(text, MacPropertyLists::deepestNesting);
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const auto first = text.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && text[first] == '<' &&
         XmlPropertyList::isSafeToParse(text, MacPropertyLists::mostXmlContainers);
}

std::optional<PropertyListValue> valueOf(id object, int deepest);

std::optional<PropertyListValue::Dictionary> dictionaryOf(NSDictionary* native, int deepest) {
  if (deepest <= 0) return std::nullopt;
  PropertyListValue::Dictionary dictionary;
  for (id key in native) {
    if (![key isKindOfClass:NSString.class]) return std::nullopt;
    auto value = valueOf(native[key], deepest - 1);
    if (!value) return std::nullopt;
    dictionary.insert_or_assign(fromNSString(static_cast<NSString*>(key)), std::move(*value));
  }
  return dictionary;
}

std::optional<PropertyListValue::Array> arrayOf(NSArray* native, int deepest) {
  if (deepest <= 0) return std::nullopt;
  PropertyListValue::Array array;
  array.reserve(native.count);
  for (id item in native) {
    auto value = valueOf(item, deepest - 1);
    if (!value) return std::nullopt;
    array.push_back(std::move(*value));
  }
  return array;
}

PropertyListValue valueOfNumber(NSNumber* number) {
  const auto native = (__bridge CFNumberRef)number;
  if (CFGetTypeID(native) == CFBooleanGetTypeID()) return {static_cast<bool>(number.boolValue)};
  if (CFNumberIsFloatType(native)) return {number.doubleValue};
  return {static_cast<std::int64_t>(number.longLongValue)};
}

PropertyListValue::Data dataOf(NSData* native) {
  const auto* bytes = static_cast<const std::byte*>(native.bytes);
  return native.length == 0 ? PropertyListValue::Data()
                            : PropertyListValue::Data(bytes, bytes + native.length);
}

// Absent when it is nested too deep or of a kind that has no place in a file's list.
std::optional<PropertyListValue> valueOf(id object, int deepest) {
  if ([object isKindOfClass:NSString.class]) {
    return PropertyListValue{fromNSString(static_cast<NSString*>(object))};
  }
  if ([object isKindOfClass:NSNumber.class]) return valueOfNumber(static_cast<NSNumber*>(object));
  if ([object isKindOfClass:NSDate.class]) {
    return PropertyListValue{PropertyListDate{static_cast<NSDate*>(object).timeIntervalSince1970}};
  }
  if ([object isKindOfClass:NSData.class]) return PropertyListValue{dataOf(static_cast<NSData*>(object))};
  if ([object isKindOfClass:NSArray.class]) {
    auto array = arrayOf(static_cast<NSArray*>(object), deepest);
    if (!array) return std::nullopt;
    return PropertyListValue{std::move(*array)};
  }
  if ([object isKindOfClass:NSDictionary.class]) {
    auto dictionary = dictionaryOf(static_cast<NSDictionary*>(object), deepest);
    if (!dictionary) return std::nullopt;
    return PropertyListValue{std::move(*dictionary)};
  }
  return std::nullopt;
}

}  // namespace

std::optional<PropertyListValue::Dictionary> MacPropertyLists::read(const std::filesystem::path& file) {
  @autoreleasepool {
    NSData* data = contentOf(file);
    if (data == nil || !isSafeToParse({static_cast<const char*>(data.bytes), data.length}))
      return std::nullopt;
    const id root = [NSPropertyListSerialization propertyListWithData:data
                                                              options:NSPropertyListImmutable
                                                               format:nil
                                                                error:nil];
    if (![root isKindOfClass:NSDictionary.class]) return std::nullopt;
    return dictionaryOf(static_cast<NSDictionary*>(root), deepestNesting);
  }
}

}  // namespace pellar
