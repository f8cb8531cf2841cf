#include "platform/sim/office/ScriptParser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

using Kind = ScriptToken::Kind;

constexpr std::array<std::string_view, 30> reserved{
    "tell", "application", "set",    "to",        "end", "repeat", "with", "in",    "try",   "if",
    "then", "return",      "of",     "as",        "is",  "not",    "and",  "every", "first", "whose",
    "true", "false",       "string", "character", "id",  "make",   "new",  "save",  "open",  "activate"};

std::string described(const ScriptToken& token) {
  switch (token.kind) {
    case Kind::word:
    case Kind::symbol:
      return "“" + token.text + "”";
    case Kind::text:
      return "“\"”";
    case Kind::number:
      return "number";
    case Kind::lineEnd:
      return "end of line";
    case Kind::end:
      break;
  }
  return "end of script";
}

}  // namespace

bool ScriptParser::at(std::span<const std::string_view> words) const {
  // The last token is no word, so a mismatch comes before the end.
  for (std::size_t index = 0; index < words.size(); ++index) {
    const ScriptToken& token = tokens_[std::min(place_ + index, tokens_.size() - 1)];
    if (token.kind != Kind::word || token.text != words[index]) return false;
  }
  return !words.empty();
}

ScriptToken ScriptParser::take() {
  ScriptToken token = next();
  if (!atEnd()) ++place_;
  return token;
}

bool ScriptParser::accept(std::span<const std::string_view> words) {
  if (!at(words)) return false;
  place_ += words.size();
  return true;
}

bool ScriptParser::acceptSymbol(std::string_view symbol) {
  if (next().kind != Kind::symbol || next().text != symbol) return false;
  ++place_;
  return true;
}

void ScriptParser::expect(std::initializer_list<std::string_view> words) {
  expect(std::span(words.begin(), words.size()));
}

void ScriptParser::expect(std::span<const std::string_view> words) {
  if (!accept(words)) refuse(words.empty() ? "end of line" : "“" + std::string(words.front()) + "”");
}

void ScriptParser::expectSymbol(std::string_view symbol) {
  if (!acceptSymbol(symbol)) refuse("“" + std::string(symbol) + "”");
}

ScriptToken ScriptParser::expect(Kind kind) {
  if (next().kind != kind) refuse("expression");
  return take();
}

std::string ScriptParser::expectVariable() {
  const bool taken = std::find(reserved.begin(), reserved.end(), next().text) != reserved.end();
  if (next().kind != Kind::word || taken) refuse("expression");
  return take().text;
}

void ScriptParser::expectLineEnd() {
  if (!atLineEnd()) refuse("end of line");
  take();
}

void ScriptParser::skipEmptyLines() {
  while (next().kind == Kind::lineEnd) take();
}

void ScriptParser::refuse(const std::string& expected) const {
  throw ScriptError(ScriptError::syntax, "Expected " + expected + " but found " + described(next()) + ".");
}

}  // namespace pellar
