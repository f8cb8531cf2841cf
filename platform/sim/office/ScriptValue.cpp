#include "platform/sim/office/ScriptValue.h"

#include <limits>
#include <utility>

#include "core/Utf8.h"
#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

[[noreturn]] void refuse(const std::string& type) {
  throw ScriptError(ScriptError::cannotCoerce, "Can’t make the value into type " + type + ".");
}

ScriptValue::List asList(const ScriptValue& value) {
  if (const auto* list = std::get_if<ScriptValue::List>(&value.value)) return *list;
  return {value};
}

}  // namespace

std::string ScriptValue::asText() const {
  if (const auto* text = std::get_if<std::string>(&value)) return *text;
  if (const auto* number = std::get_if<std::int32_t>(&value)) return std::to_string(*number);
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? "true" : "false";
  if (const auto* list = std::get_if<List>(&value)) {
    std::string all;
    for (const ScriptValue& item : *list) all += item.asText();
    return all;
  }
  refuse("string");
}

bool ScriptValue::asBoolean() const {
  if (const auto* truth = std::get_if<bool>(&value)) return *truth;
  refuse("boolean");
}

std::int32_t ScriptValue::asNumber() const {
  if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
  refuse("number");
}

SimDocumentPointer ScriptValue::asDocument() const {
  if (const auto* document = std::get_if<SimDocumentPointer>(&value)) return *document;
  refuse("specifier");
}

bool ScriptValue::is(const ScriptValue& other) const {
  const auto* left = std::get_if<std::string>(&value);
  const auto* right = std::get_if<std::string>(&other.value);
  if (left != nullptr && right != nullptr) return Utf8::folded(*left) == Utf8::folded(*right);
  return value == other.value;
}

ScriptValue ScriptValue::joined(const ScriptValue& right) const {
  if (const auto* text = std::get_if<std::string>(&value)) return {*text + right.asText()};
  List all = asList(*this);
  for (ScriptValue& item : asList(right)) all.push_back(std::move(item));
  return {std::move(all)};
}

ScriptValue ScriptValue::plus(const ScriptValue& right) const {
  const auto sum = std::int64_t{asNumber()} + right.asNumber();
  if (sum > std::numeric_limits<std::int32_t>::max() || sum < std::numeric_limits<std::int32_t>::min()) {
    throw ScriptError(ScriptError::numericOverflow, "The result of a numeric operation was too large.");
  }
  return {static_cast<std::int32_t>(sum)};
}

std::optional<ScriptDescriptor> ScriptValue::descriptor() const {
  std::optional<ScriptDescriptor> result;
  if (const auto* list = std::get_if<List>(&value)) {
    auto& items = result.emplace().value.emplace<std::vector<ScriptDescriptor>>();
    for (const ScriptValue& item : *list) {
      if (auto descriptor = item.descriptor()) items.push_back(std::move(*descriptor));
    }
  } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
    result.emplace().value = *number;
  } else if (std::holds_alternative<std::string>(value) || std::holds_alternative<bool>(value)) {
    result.emplace().value = asText();
  }
  return result;
}

}  // namespace pellar
