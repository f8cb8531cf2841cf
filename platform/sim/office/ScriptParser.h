#pragma once

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sim/office/ScriptLexer.h"

namespace pellar {

// Walks over the tokens of a script. What is expected and not there is a ScriptError.
class ScriptParser {
 public:
  explicit ScriptParser(std::vector<ScriptToken> tokens) : tokens_(std::move(tokens)) {}

  [[nodiscard]] const ScriptToken& next() const { return tokens_[place_]; }
  [[nodiscard]] bool atEnd() const { return next().kind == ScriptToken::Kind::end; }
  [[nodiscard]] bool atLineEnd() const { return atEnd() || next().kind == ScriptToken::Kind::lineEnd; }
  // Whether these words come next.
  [[nodiscard]] bool at(std::span<const std::string_view> words) const;

  ScriptToken take();
  // Takes the words or the symbol when they come next.
  bool accept(std::span<const std::string_view> words);
  bool accept(std::string_view word) { return accept(std::span(&word, 1)); }
  bool acceptSymbol(std::string_view symbol);

  void expect(std::initializer_list<std::string_view> words);
  void expect(std::span<const std::string_view> words);
  void expectSymbol(std::string_view symbol);
  ScriptToken expect(ScriptToken::Kind kind);
  // A word that the language does not keep for itself.
  std::string expectVariable();
  void expectLineEnd();
  void skipEmptyLines();

  [[noreturn]] void refuse(const std::string& expected) const;

 private:
  std::vector<ScriptToken> tokens_;
  std::size_t place_ = 0;
};

}  // namespace pellar
