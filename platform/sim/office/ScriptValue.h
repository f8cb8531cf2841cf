#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/ScriptRunner.h"

namespace pellar {

struct SimDocument;
using SimDocumentPointer = std::shared_ptr<SimDocument>;

// What an expression of a simulated script yields. Operations that the language refuses throw a ScriptError.
struct ScriptValue {
  using List = std::vector<ScriptValue>;
  // Nothing at all, a truth value, a number, a text, a list, or a document.
  std::variant<std::monostate, bool, std::int32_t, std::string, List, SimDocumentPointer> value;

  [[nodiscard]] std::string asText() const;     // `as string`
  [[nodiscard]] bool asBoolean() const;         // a condition
  [[nodiscard]] std::int32_t asNumber() const;  // an operand of `+`
  [[nodiscard]] SimDocumentPointer asDocument() const;
  // `is`: texts compare without regard to case.
  [[nodiscard]] bool is(const ScriptValue& other) const;
  // `&`: a text when the left one is a text, else a list.
  [[nodiscard]] ScriptValue joined(const ScriptValue& right) const;
  // `+`.
  [[nodiscard]] ScriptValue plus(const ScriptValue& right) const;
  // What the caller of the script gets. Absent for nothing and for a document.
  [[nodiscard]] std::optional<ScriptDescriptor> descriptor() const;

  friend bool operator==(const ScriptValue&, const ScriptValue&) = default;
};

}  // namespace pellar
