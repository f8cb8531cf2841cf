#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <re2/re2.h>

#include <string>
#include <vector>

#include "core/TabLabel.h"
#include "core/Utf8.h"

namespace pellar {
namespace {

// The definition itself: all fifteen alternatives in one expression, asked of the whole text again and again.
std::string withoutSuffixesByDefinition(std::string text) {
  static const std::string space =
      R"([\x{9}-\x{D} \x{85}\x{A0}\x{1680}\x{2000}-\x{200A}\x{2028}\x{2029}\x{202F}\x{205F}\x{3000}])";
  static const std::string any = R"([^\x{A}-\x{D}\x{85}\x{2028}\x{2029}])";
  static const std::string alternatives =
      R"(Saved|Word|Excel|PowerPoint|Outlook|Compatibility Mode|Read-Only|Protected View|Repaired|Shared|)"
      R"(Last Modified|AutoRecovered|Autosaved|Saved to )" +
      any + "+|Last Modified" + any + "*";
  static const RE2 pattern("(" + space + "*[-–—•]" + space + "*(" + alternatives + ")|" + space + R"(*\[()" +
                           alternatives + R"()\]))" + space + R"(*\z)");
  while (RE2::Replace(&text, pattern, "")) {
  }
  return text;
}

rc::Gen<std::string> anyTitle() {
  const auto piece = rc::gen::element<std::string>(
      " ", " ", " - ", "-", "–", "—", "•", "[", "]", "[", "]", "\n", "\u2028", "\r", "\u00A0", "Word",
      "Read-Only", "Saved", "Saved to ", "Saved to", "Last Modified", "Last Modified: x",
      "Compatibility Mode", "x", "Plan", ".docx", "é", "\xFF", "\xE2\x80", "- Word", "[Shared]",
      "- Saved to X", "[Saved to X]", "[Last Modified");
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                      [](const std::vector<std::string>& pieces) {
                        std::string title;
                        for (const std::string& part : pieces) title += part;
                        return title;
                      });
}

void expectDefinition(const std::string& title) {
  const std::string cleaned = withoutSuffixesByDefinition(Utf8::repaired(title));
  const std::string expected = TabLabel::stripExtension(Utf8::trimmed(cleaned));
  RC_ASSERT(TabLabel::label(title, std::nullopt) == expected);
  RC_ASSERT(TabLabel::tagKey(title, std::nullopt) == "title:" + expected);
}

RC_GTEST_PROP(TabLabelProperty, CleansLikeTheOneExpression, ()) {
  for (int round = 0; round < 50; ++round) expectDefinition(*anyTitle());
}

RC_GTEST_PROP(TabLabelProperty, CleansAnyBytesLikeTheOneExpression, (const std::string& bytes)) {
  expectDefinition(bytes);
}

RC_GTEST_PROP(TabLabelProperty, ASuffixAppendedToAPlainNameIsHidden, ()) {
  // White space at its end would go with the suffix.
  const std::string name = *rc::gen::string<std::string>() + "x";
  const std::string plain = TabLabel::label(name, std::nullopt);
  const auto suffix = *rc::gen::element<std::string>(" - Word", " – Saved to my Mac", " [Compatibility Mode]",
                                                     "\u00A0•\u00A0Shared", " — Last Modified: now ");
  RC_ASSERT(TabLabel::label(Utf8::repaired(name) + suffix, std::nullopt) == plain);
}

RC_GTEST_PROP(TabLabelProperty, APathIsItsOwnKeyAndNamesTheTabAlone,
              (const std::string& title, const std::string& path)) {
  RC_PRE(!path.empty());
  RC_ASSERT(TabLabel::tagKey(title, path) == path);
  RC_ASSERT(TabLabel::label(title, path) == TabLabel::label("", path));
  RC_ASSERT(Utf8::isValid(TabLabel::label(title, path)));
}

}  // namespace
}  // namespace pellar
