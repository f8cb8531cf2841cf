#include <string>

#include "platform/Alerts.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class AlertContract : public ContractTest {
 protected:
  AlertContract() : editor(world().launch("editor")) {
    world().open(editor, "Report.txt", {60, 160, 400, 300});
    elementOf(editor, "Report.txt");
    if (!wait([this] { return isInFront(editor); })) throw std::runtime_error("nothing comes to the front");
  }

  [[nodiscard]] std::optional<TextAlertAnswer> ask(const std::string& before) {
    return world().platform().alerts.runModal(
        {"Rename file", "New name for Report:", {"OK", "Cancel"}, {260, 24}, before});
  }

  ProcessId editor;
};

TEST_F(AlertContract, WhatIsTypedReplacesWhatWasThereAndReturnIsTheFirstButton) {
  world().answerNextQuestion("plan b");
  const auto answer = ask("Report");
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->response, TextAlertAnswer::firstButtonReturn);
  EXPECT_EQ(answer->fieldText, "plan b");
}

TEST_F(AlertContract, AnswersWithWhatStandsThereWhenNothingIsTyped) {
  world().answerNextQuestion("");
  const auto answer = ask("Report 2");
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->response, TextAlertAnswer::firstButtonReturn);
  EXPECT_EQ(answer->fieldText, "Report 2");
}

TEST_F(AlertContract, EscapeIsCancel) {
  world().answerNextQuestion(std::nullopt);
  const auto answer = ask("Report");
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->response, TextAlertAnswer::firstButtonReturn + 1);
}

TEST_F(AlertContract, TheLoopRunsWhileOneIsAskedAndNoOtherIs) {
  bool refused = false;
  mainLoop().post([&] { refused = !ask("second").has_value(); });
  world().answerNextQuestion("first");
  const auto answer = ask("");
  EXPECT_TRUE(refused);
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->fieldText, "first");
  world().answerNextQuestion("third");
  EXPECT_TRUE(ask("").has_value()) << "it can be asked again";
}

// Not every system brings it back by itself.
TEST_F(AlertContract, SomeApplicationIsInFrontUntilTheOneBeforeIsAskedToComeBack) {
  world().answerNextQuestion("plan");
  static_cast<void>(ask(""));
  workspace().activate(editor);
  bool without = false;
  EXPECT_TRUE(wait([&] {
    without = without || !workspace().frontmostApplication().has_value();
    return isInFront(editor);
  }));
  EXPECT_FALSE(without);
}

}  // namespace pellar::contract
