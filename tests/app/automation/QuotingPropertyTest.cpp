#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "app/automation/Automation.h"

namespace pellar {
namespace {

TEST(Quoting, DoublesBackslashesAndEscapesQuotes) {
  EXPECT_EQ(Automation::quoted(""), R"("")");
  EXPECT_EQ(Automation::quoted("Plan"), R"("Plan")");
  EXPECT_EQ(Automation::quoted(R"(a"b)"), R"("a\"b")");
  EXPECT_EQ(Automation::quoted(R"(a\b)"), R"("a\\b")");
  EXPECT_EQ(Automation::quoted(R"(\")"), R"("\\\"")") << "backslashes first, then quotes";
  EXPECT_EQ(Automation::quoted("naïve\t计划\n"), "\"naïve\t计划\n\"") << "all else stays as it is";
}

// Any bytes at all, with those that matter to the language often among them.
rc::Gen<std::string> anyText() {
  const auto letter = rc::gen::oneOf(
      rc::gen::element('"', '\\', '\n', '\r', '\t', '\0', '&', '{', '(', 'n', 't', ' ', '\xFF', '\xC3'),
      rc::gen::arbitrary<char>());
  return rc::gen::container<std::string>(letter);
}

RC_GTEST_PROP(QuotingProperty, OnlyBackslashesAndQuotesTakeMoreRoom, ()) {
  const std::string text = *anyText();
  const auto special = std::count_if(text.begin(), text.end(), [](char c) { return c == '"' || c == '\\'; });
  RC_ASSERT(Automation::quoted(text).size() == text.size() + static_cast<std::size_t>(special) + 2);
}

}  // namespace
}  // namespace pellar
