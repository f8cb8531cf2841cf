#include "platform/sim/office/ScriptLexer.h"

#include <charconv>
#include <system_error>

#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

using Kind = ScriptToken::Kind;

bool isDigit(char letter) {
  return letter >= '0' && letter <= '9';
}
bool isLetter(char letter) {
  return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || letter == '_';
}
char lower(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

class ScriptLexer {
 public:
  explicit ScriptLexer(std::string_view source) : rest_(source) {}

  std::vector<ScriptToken> tokens() {
    while (!rest_.empty()) readOne();
    add(Kind::end, {});
    return std::move(tokens_);
  }

 private:
  void readOne() {
    const char first = rest_.front();
    if (first == ' ' || first == '\t') {
      rest_.remove_prefix(1);
    } else if (first == '\n' || first == '\r') {
      rest_.remove_prefix(1);
      add(Kind::lineEnd, {});
    } else if (first == '"') {
      readText();
    } else if (isDigit(first)) {
      readNumber();
    } else if (isLetter(first)) {
      readWord();
    } else if (std::string_view("(){}&+").find(first) != std::string_view::npos) {
      add(Kind::symbol, std::string(1, first));
      rest_.remove_prefix(1);
    } else {
      throw ScriptError(ScriptError::syntax, "Expected expression but found unknown token.");
    }
  }

  // Everything between the quotes counts as it stands, also line ends, but for what follows a backslash.
  void readText() {
    std::string text;
    std::size_t place = 1;
    for (; place < rest_.size() && rest_[place] != '"'; ++place) {
      if (rest_[place] != '\\') {
        text += rest_[place];
        continue;
      }
      ++place;
      text += escaped(place < rest_.size() ? rest_[place] : '\0');
    }
    if (place >= rest_.size())
      throw ScriptError(ScriptError::syntax, "Expected “\"” but found end of script.");
    rest_.remove_prefix(place + 1);
    add(Kind::text, std::move(text));
  }

  static char escaped(char letter) {
    switch (letter) {
      case '\\':
      case '"':
        return letter;
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      case 't':
        return '\t';
      default:
        throw ScriptError(ScriptError::syntax, "Expected “\"” but found unknown token.");
    }
  }

  void readNumber() {
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (error != std::errc{}) throw ScriptError(ScriptError::numericOverflow, "The number is too large.");
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    add(Kind::number, {}, number);
  }

  void readWord() {
    std::string word;
    while (!rest_.empty() && (isLetter(rest_.front()) || isDigit(rest_.front()))) {
      word += lower(rest_.front());
      rest_.remove_prefix(1);
    }
    add(Kind::word, std::move(word));
  }

  void add(Kind kind, std::string text, std::int32_t number = 0) {
    tokens_.push_back({kind, std::move(text), number});
  }

  std::string_view rest_;
  std::vector<ScriptToken> tokens_;
};

}  // namespace

std::vector<ScriptToken> scriptTokens(std::string_view source) {
  return ScriptLexer(source).tokens();
}

}  // namespace pellar
