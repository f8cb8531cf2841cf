#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pellar {

// The smallest parts of a script.
struct ScriptToken {
  enum class Kind : std::uint8_t { word, text, number, symbol, lineEnd, end };

  Kind kind = Kind::end;
  std::string
      text;  // a word in lower case, since case does not matter; a text without its quotes and escapes
  std::int32_t number = 0;
};

// Takes a script apart; the last token is `end`. Throws a ScriptError for what is no part of the language.
[[nodiscard]] std::vector<ScriptToken> scriptTokens(std::string_view source);

}  // namespace pellar
