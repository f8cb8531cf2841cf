#include "platform/sim/office/ScriptCompiler.h"

#include <array>
#include <utility>
#include <vector>

#include "platform/sim/office/HfsPath.h"
#include "platform/sim/office/OfficeTerms.h"
#include "platform/sim/office/ScriptError.h"
#include "platform/sim/office/ScriptParser.h"

namespace pellar {

namespace {

using Kind = ScriptToken::Kind;
using OfficeTerms::Term;

ScriptCode constant(ScriptValue value) {
  return [value = std::move(value)](ScriptRun& /*run*/) { return value; };
}

ScriptValue valueOf(ScriptRun& run, const std::string& variable) {
  const auto found = run.variables.find(variable);
  if (found != run.variables.end()) return found->second;
  throw ScriptError(ScriptError::undefinedVariable, "The variable " + variable + " is not defined.");
}

std::string joined(const Term& term) {
  std::string all;
  for (const auto word : term) all += (all.empty() ? "" : " ") + std::string(word);
  return all;
}

// One script from its text to what can be run. Operators bind in the language's own order: `+`, `&`, `as`,
// `is`, `and`.
class ScriptCompiler {
 public:
  explicit ScriptCompiler(std::string_view source) : parser_(scriptTokens(source)) {}

  ScriptCode script() {
    auto body = statementsUntilEnd();
    if (!parser_.atEnd()) parser_.refuse("end of script");
    return body;
  }

 private:
  // Statements up to `end` or the end of the script.
  ScriptCode statementsUntilEnd() {
    std::vector<ScriptCode> statements;
    for (parser_.skipEmptyLines(); !parser_.atEnd() && !isAtEndWord(); parser_.skipEmptyLines()) {
      statements.push_back(statement());
      parser_.expectLineEnd();
    }
    return [statements = std::move(statements)](ScriptRun& run) {
      ScriptValue last;
      for (const ScriptCode& statement : statements) {
        last = statement(run);
        if (run.returned) return *run.returned;
      }
      return last;
    };
  }

  [[nodiscard]] bool isAtEndWord() const {
    static constexpr std::string_view word = "end";
    return parser_.at(std::span(&word, 1));
  }

  // The lines up to `end <word>`.
  ScriptCode block(std::string_view word) {
    parser_.expectLineEnd();
    auto body = statementsUntilEnd();
    parser_.expect({"end", word});
    return body;
  }

  ScriptCode statement() {
    if (parser_.accept("tell")) return tellBlock();
    if (parser_.accept("set")) return assignment();
    if (parser_.accept("repeat")) return repetition();
    if (parser_.accept("try")) return attempt();
    if (parser_.accept("if")) return condition();
    if (parser_.accept("return")) {
      return [value = expression()](ScriptRun& run) {
        run.returned = value(run);
        return *run.returned;
      };
    }
    if (told_) {
      if (auto code = command()) return code;
    }
    return expression();
  }

  ScriptCode tellBlock() {
    if (told_) parser_.refuse("a block without another one inside");
    parser_.expect({"application"});
    const std::string name = parser_.expect(Kind::text).text;
    told_ = OfficeTerms::applicationNamed(name);
    if (!told_) throw ScriptError(ScriptError::noSuchObject, "Can’t get application \"" + name + "\".");
    const OfficeApp app = *told_;
    auto body = block("tell");
    told_.reset();
    return [app, body = std::move(body)](ScriptRun& run) {
      run.told.emplace(run.office, app);
      auto value = body(run);
      run.told.reset();
      return value;
    };
  }

  ScriptCode assignment() {
    if (parser_.accept("end")) {
      parser_.expect({"of"});
      std::string variable = parser_.expectVariable();
      parser_.expect({"to"});
      return [variable = std::move(variable), value = expression()](ScriptRun& run) {
        auto item = value(run);
        ScriptValue list = valueOf(run, variable);
        auto* items = std::get_if<ScriptValue::List>(&list.value);
        if (items == nullptr)
          throw ScriptError(ScriptError::noSuchObject, "Can’t set end of " + variable + ".");
        items->push_back(item);
        run.variables.insert_or_assign(variable, std::move(list));
        return item;
      };
    }
    std::string variable = parser_.expectVariable();
    parser_.expect({"to"});
    return [variable = std::move(variable), value = expression()](ScriptRun& run) {
      auto assigned = value(run);
      run.variables.insert_or_assign(variable, assigned);
      return assigned;
    };
  }

  ScriptCode repetition() {
    parser_.expect({"with"});
    std::string variable = parser_.expectVariable();
    parser_.expect({"in"});
    auto list = expression();
    return [variable = std::move(variable), list = std::move(list), body = block("repeat")](ScriptRun& run) {
      const ScriptValue all = list(run);
      const auto* items = std::get_if<ScriptValue::List>(&all.value);
      if (items == nullptr) throw ScriptError(ScriptError::noSuchObject, "Can’t repeat with the value.");
      for (const ScriptValue& item : *items) {
        run.variables.insert_or_assign(variable, item);
        body(run);
        if (run.returned) break;
      }
      return ScriptValue{};
    };
  }

  ScriptCode attempt() {
    return [body = block("try")](ScriptRun& run) {
      try {
        return body(run);
      } catch (const ScriptError&) {
        return ScriptValue{};  // there is no handler for it in any script
      }
    };
  }

  ScriptCode condition() {
    auto test = expression();
    parser_.expect({"then"});
    return [test = std::move(test), body = block("if")](ScriptRun& run) {
      return test(run).asBoolean() ? body(run) : ScriptValue{};
    };
  }

  // A command of the application addressed; empty when none comes next.
  ScriptCode command() {
    if (parser_.accept("activate")) {
      return [](ScriptRun& run) {
        run.told->activate();
        return ScriptValue{};
      };
    }
    if (!OfficeTerms::messageClass(*told_).empty()) {
      if (!parser_.accept("open")) return nullptr;
      return [message = primary()](ScriptRun& run) {
        run.told->openMessage(message(run));
        return ScriptValue{};
      };
    }
    const auto& saveAs = OfficeTerms::saveAs(*told_);
    if (saveAs.command.size() > 1 && parser_.accept(saveAs.command)) return saving(primary(), true);
    if (!parser_.accept("save")) return nullptr;
    auto document = primary();
    return saving(std::move(document), saveAs.command.size() == 1 && parser_.at(saveAs.label));
  }

  ScriptCode saving(ScriptCode document, bool elsewhere) {
    if (!elsewhere) {
      return [document = std::move(document)](ScriptRun& run) {
        run.told->save(document(run));
        return ScriptValue{};
      };
    }
    parser_.expect(std::span<const std::string_view>(OfficeTerms::saveAs(*told_).label));
    return [document = std::move(document), path = expression()](ScriptRun& run) {
      const auto saved = document(run);
      run.told->saveAs(saved, path(run).asText());
      return ScriptValue{};
    };
  }

  ScriptCode expression() {
    auto left = comparison();
    while (parser_.accept("and")) {
      left = [left = std::move(left), right = comparison()](ScriptRun& run) {
        return ScriptValue{left(run).asBoolean() && right(run).asBoolean()};
      };
    }
    return left;
  }

  ScriptCode comparison() {
    auto left = coercion();
    if (!parser_.accept("is")) return left;
    const bool negated = parser_.accept("not");
    return [left = std::move(left), right = coercion(), negated](ScriptRun& run) {
      const auto value = left(run);
      return ScriptValue{value.is(right(run)) != negated};
    };
  }

  ScriptCode coercion() {
    auto value = concatenation();
    while (parser_.accept("as")) {
      parser_.expect({"string"});
      value = [value = std::move(value)](ScriptRun& run) { return ScriptValue{value(run).asText()}; };
    }
    return value;
  }

  ScriptCode concatenation() {
    auto left = sum();
    while (parser_.acceptSymbol("&")) {
      left = [left = std::move(left), right = sum()](ScriptRun& run) {
        const auto value = left(run);
        return value.joined(right(run));
      };
    }
    return left;
  }

  ScriptCode sum() {
    auto left = primary();
    while (parser_.acceptSymbol("+")) {
      left = [left = std::move(left), right = primary()](ScriptRun& run) {
        const auto value = left(run);
        return value.plus(right(run));
      };
    }
    return left;
  }

  ScriptCode primary() {
    if (parser_.next().kind == Kind::text) return constant({parser_.take().text});
    if (parser_.next().kind == Kind::number) return constant({parser_.take().number});
    if (parser_.acceptSymbol("{")) {
      parser_.expectSymbol("}");
      return constant({ScriptValue::List{}});
    }
    if (parser_.acceptSymbol("(")) {
      auto inner = expression();
      parser_.expectSymbol(")");
      return inner;
    }
    if (parser_.accept("true")) return constant({true});
    if (parser_.accept("false")) return constant({false});
    if (parser_.accept("character")) return character();
    static constexpr std::array<std::string_view, 2> posixPath{"posix", "path"};
    if (parser_.accept(posixPath)) {
      parser_.expect({"of"});
      return [text = primary()](ScriptRun& run) { return ScriptValue{HfsPath::toPosix(text(run).asText())}; };
    }
    if (told_) {
      if (auto code = applicationTerm()) return code;
    }
    return [variable = parser_.expectVariable()](ScriptRun& run) { return valueOf(run, variable); };
  }

  ScriptCode character() {
    parser_.expect({"id"});
    const auto code = parser_.expect(Kind::number).number;
    if (code < 0 || code > 127) parser_.refuse("a character of ASCII");
    return constant({std::string(1, static_cast<char>(code))});
  }

  // An expression in the application's own words; empty when none comes next.
  ScriptCode applicationTerm() {
    const Term documentClass = OfficeTerms::documentClass(*told_);
    if (parser_.accept("every")) {
      parser_.expect(std::span<const std::string_view>(documentClass));
      return [](ScriptRun& run) { return run.told->everyDocument(); };
    }
    if (parser_.accept("first")) {
      parser_.expect(std::span<const std::string_view>(documentClass));
      parser_.expect({"whose"});
      const auto property = acceptProperty();
      if (!property) parser_.refuse("property");
      parser_.expect({"is"});
      return [property = *property, value = concatenation()](ScriptRun& run) {
        const auto wanted = value(run);
        return run.told->firstDocumentWhose(property, wanted);
      };
    }
    if (parser_.accept("make")) return making();
    if (const auto property = acceptProperty()) {
      parser_.expect({"of"});
      return [property = *property, owner = primary()](ScriptRun& run) {
        const auto document = owner(run);
        return run.told->property(property, document);
      };
    }
    return nullptr;
  }

  ScriptCode making() {
    parser_.expect({"new"});
    const Term messageClass = OfficeTerms::messageClass(*told_);
    if (parser_.accept(messageClass)) return [](ScriptRun& run) { return run.told->makeMessage(); };
    parser_.expect(std::span<const std::string_view>(OfficeTerms::documentClass(*told_)));
    return [](ScriptRun& run) { return run.told->makeDocument(); };
  }

  std::optional<std::string> acceptProperty() {
    for (const Term& property : OfficeTerms::properties(*told_)) {
      if (parser_.accept(property)) return joined(property);
    }
    return std::nullopt;
  }

  ScriptParser parser_;
  std::optional<OfficeApp> told_;  // whose words count
};

}  // namespace

ScriptCode compiledScript(std::string_view source) {
  return ScriptCompiler(source).script();
}

}  // namespace pellar
