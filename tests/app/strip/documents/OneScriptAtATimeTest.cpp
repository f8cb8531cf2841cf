#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>

#include "tests/support/MenuStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// While an application works on a script the user goes on, windows open and timers fire.
class OneScriptAtATime : public WordStory {
 protected:
  OneScriptAtATime() {
    mac.scripts().answer = [this](const std::string& source) {
      most = std::max(most, ++underWay);
      auto result = mac.scripts().interpret(source);
      --underWay;
      return result;
    };
  }
  void TearDown() override {
    WordStory::TearDown();
    EXPECT_LE(most, 1) << "scripts ran inside one another";
  }
  // Something happens while Word is asked for the file of a window that opens.
  void whileWordIsAsked(const std::function<void()>& happening) {
    mac.office().beforeEvent = [this, happening](const std::string&) {
      mac.office().beforeEvent = nullptr;
      happening();
    };
    static_cast<void>(openInWord("Other.docx"));
    mac.settle();
    EXPECT_FALSE(mac.office().beforeEvent) << "Word was never asked";
  }
  // Something happens while Word saves everything, which the menu of that tab has it do.
  void whileWordSaves(const std::string& tab, const std::function<void()>& happening) {
    mac.office().beforeEvent = [this, happening](const std::string& event) {
      if (event != "save") return;
      mac.office().beforeEvent = nullptr;
      happening();
    };
    choose(tab, {"Save all"});
    mac.settle();
    EXPECT_FALSE(mac.office().beforeEvent) << "Word never saved";
  }

  int underWay = 0;
  int most = 0;
};

TEST_F(OneScriptAtATime, WhatIsSavedMeanwhileIsSavedAfterwards) {
  const auto plan = openInWord("Plan.docx");
  start();
  whileWordIsAsked([&] {
    choose("Plan", {"Save all"});
    EXPECT_EQ(plan->saves, 0);
  });
  EXPECT_EQ(plan->saves, 1);
}

TEST_F(OneScriptAtATime, ANewDocumentWantedMeanwhileIsMadeAfterwards) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordIsAsked([&] { mac.strip().clickTool(tool::newDocument); });
  EXPECT_EQ(mac.office().documents(word).size(), 3U);
}

TEST_F(OneScriptAtATime, ANameGivenMeanwhileIsTakenAfterwards) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordIsAsked([&] {
    mac.alerts().nextType("Budget");
    choose("Plan", {"Rename…"});
    EXPECT_EQ(mac.alerts().shown().size(), 1U) << "the question need not wait";
    EXPECT_TRUE(exists(pathOf("Plan.docx")));
  });
  EXPECT_TRUE(exists(pathOf("Budget.docx")));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
}

TEST_F(OneScriptAtATime, TheRenameToolAsksForANameMeanwhile) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordSaves("Plan", [&] {
    mac.alerts().nextType("Budget");
    strip().clickTool("Rename");
    EXPECT_EQ(mac.alerts().shown().size(), 1U) << "the question need not wait";
  });
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
}

TEST_F(OneScriptAtATime, AGroupOfWindowsNotAskedAboutYetIsSavedAfterwards) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordIsAsked([&] {
    chooseInTool("Groups", {"Save open tabs as group…"});
    EXPECT_TRUE(mac.alerts().shown().empty());
    mac.alerts().nextType("Monday");
  });
  mac.settle();
  EXPECT_EQ(saved().groups.at("Monday"), (Labels{pathOf("Plan.docx"), pathOf("Other.docx")}));
}

TEST_F(OneScriptAtATime, AGroupOfKnownFilesIsAskedForAtOnce) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordSaves("Plan", [&] {
    mac.alerts().nextType("Monday");
    chooseInTool("Groups", {"Save open tabs as group…"});
    EXPECT_EQ(saved().groups.at("Monday"), Labels{pathOf("Plan.docx")});
  });
}

TEST_F(OneScriptAtATime, AGroupOfAnotherApplicationIsAskedForAtOnce) {
  static_cast<void>(openInWord("Plan.docx"));
  open("Notes", {100, 200, 1300, 600}).setDocument("file:///Users/ann/Notes.txt");
  open("Untitled", {100, 200, 1300, 600});
  start();
  ASSERT_EQ(strip().tabs(), Labels{"Plan"});
  whileWordSaves("Plan", [&] {
    mac.activate(editor);
    mac.settle();
    mac.alerts().nextType("Monday");
    chooseInTool("Groups", {"Save open tabs as group…"});
    EXPECT_EQ(saved().groups.at("Monday"), Labels{"/Users/ann/Notes.txt"});
  });
}

TEST_F(OneScriptAtATime, AWindowThatOpensMeanwhileIsAskedAboutAfterwards) {
  const auto plan = openInWord("Plan.docx");
  start();
  whileWordSaves("Plan", [&] {
    static_cast<void>(openInWord("Report.docx"));
    mac.settle();
    EXPECT_EQ(knownFile(), std::nullopt);
  });
  EXPECT_EQ(knownFile(), pathOf("Report.docx"));
}

TEST_F(OneScriptAtATime, AWindowWhoseMenuIsOpenedMeanwhileIsAskedAboutAfterwards) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  whileWordSaves("Plan", [&] {
    static_cast<void>(openInWord("Report.docx"));
    mac.settle();
    EXPECT_EQ(tabMenu("Report").at(7), "(Copy path)");
  });
  EXPECT_EQ(knownFile(), pathOf("Report.docx"));
}

TEST_F(OneScriptAtATime, HoweverMuchHappensMeanwhileOneMorePictureMakesUpForIt) {
  const auto plan = openInWord("Plan.docx");
  start();
  const auto readAfter = [&](int moves) {
    whileWordSaves("Plan", [&] {
      for (int i = 1; i <= moves; ++i) {
        plan->window->moveTo({100, 200.0 + i});
        mac.settle();
      }
      mac.accessibility().forgetRoundTrips();
    });
    return mac.accessibility().roundTrips().reads;
  };
  const int once = readAfter(1);
  EXPECT_GT(once, 0);
  EXPECT_EQ(readAfter(20), once);
}

TEST_F(OneScriptAtATime, ATabStillShownForAWindowThatIsGoneHasNoMenu) {
  const auto plan = openInWord("Plan.docx");
  start();
  plan->window->close();
  const auto shown = mac.menus().shown().size();
  whileWordIsAsked([&] {
    ASSERT_EQ(mac.strip().tabs(), Labels{"Plan"});
    mac.strip().rightClickTab("Plan");
    EXPECT_EQ(mac.menus().shown().size(), shown);
  });
  EXPECT_EQ(strip().tabs(), Labels{"Other"});
}

TEST_F(OneScriptAtATime, SeveralWantedMeanwhileAreAllDone) {
  const auto plan = openInWord("Plan.docx");
  start();
  whileWordIsAsked([&] {
    mac.strip().clickTool(tool::newDocument);
    choose("Plan", {"Save all"});
    mac.strip().clickTool(tool::newDocument);
  });
  EXPECT_EQ(mac.office().documents(word).size(), 4U);
  EXPECT_EQ(plan->saves, 1);
}

TEST_F(OneScriptAtATime, AnApplicationThatQuitWhileTheMenuWasOpenStaysAway) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  chooseAfter("Plan", [&] { mac.terminate(word); }, {"Save all"});
  EXPECT_EQ(mac.office().launches(), 0);
}

TEST_F(OneScriptAtATime, ANewDocumentDoesNotBringAnApplicationBack) {
  openInWord("Plan.docx")->window->setFrame({100, 200, 250, 600});
  start();
  mac.menus().next([&](SimOpenMenu& menu) {
    mac.terminate(word);
    mac.settle();
    menu.choose({"New document"});
  });
  mac.strip().clickTool(tool::overflow);
  EXPECT_EQ(mac.office().launches(), 0);
}

TEST_F(OneScriptAtATime, ARenameDoesNotBringBackWhatQuitDuringIt) {
  static_cast<void>(openInWord("Plan.docx"));
  start();
  mac.office().afterEvent = [&](const std::string& event) {
    if (event == "save as") mac.terminate(word);
  };
  mac.alerts().nextType("Budget");
  choose("Plan", {"Rename…"});
  EXPECT_EQ(mac.office().launches(), 0);
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
}

// What an Office application asks its own user in the middle of a rename.
class RenameWithQuestions : public OneScriptAtATime {
 protected:
  RenameWithQuestions() {
    plan = openInWord("Plan.docx");
    start();
    choose("Plan", {"Colour tag", "Red"});
  }
  void rename() {
    mac.alerts().nextType("Budget");
    choose("Plan", {"Rename…"});
  }
  void answerIn(std::chrono::seconds time, bool yes) {
    answer = mac.mainLoop().after(time, [this, yes] { mac.office().answer(yes); });
  }

  SimDocumentPointer plan;
  Subscription answer;
};

TEST_F(RenameWithQuestions, AccessThatIsGivenLetsItGoOn) {
  mac.office().asksForAccess = true;
  answerIn(30s, true);
  rename();
  EXPECT_TRUE(exists(pathOf("Budget.docx")));
  EXPECT_FALSE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
}

TEST_F(RenameWithQuestions, AccessThatIsDeniedLeavesEverything) {
  mac.office().asksForAccess = true;
  answerIn(30s, false);
  rename();
  EXPECT_FALSE(exists(pathOf("Budget.docx")));
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
  EXPECT_TRUE(log.has("rename failed for " + pathOf("Plan.docx") + " -> Budget"));
}

TEST_F(RenameWithQuestions, AccessGivenAfterTheWaitTakesTheColourAlongAndLosesNothing) {
  mac.office().asksForAccess = true;
  rename();
  EXPECT_TRUE(log.has("rename failed for " + pathOf("Plan.docx") + " -> Budget"));
  mac.advance(31s);
  mac.office().answer(true);
  mac.settle();
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_TRUE(exists(pathOf("Budget.docx")));
  EXPECT_EQ(strip().tabs(), Labels{"Budget"});
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
  EXPECT_TRUE(saved().recent.contains(pathOf("Budget.docx")));
}

TEST_F(RenameWithQuestions, WordThatGoesOnAfterTheWaitTakesTheColourAlong) {
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save as") word.freeze();
  };
  rename();
  mac.office().beforeEvent = nullptr;
  mac.advance(31s);
  word.resume();
  mac.settle();
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_EQ(strip().tagOf("Budget"), Color::of(SystemColor::red));
  EXPECT_EQ(saved().tags, redOf("Budget.docx"));
}

TEST_F(RenameWithQuestions, ADocumentSavedUnderAnotherNameInsteadLeavesTheColour) {
  mac.office().asksForAccess = true;
  answerIn(30s, false);
  rename();
  mac.office().asksForAccess = false;
  mac.advance(31s);
  mac.office().saveAs(word.pid(), plan, pathOf("Elsewhere.docx"));
  mac.settle();
  EXPECT_EQ(saved().tags, redOf("Plan.docx"));
}

TEST_F(RenameWithQuestions, AFileThatCameMeanwhileStaysWhenTheUserSaysSo) {
  mac.office().asksBeforeReplacing = true;
  mac.office().beforeEvent = [&](const std::string& event) {
    if (event == "save as") std::filesystem::copy_file(pathOf("Plan.docx"), pathOf("Budget.docx"));
  };
  answerIn(5s, false);
  rename();
  EXPECT_TRUE(exists(pathOf("Plan.docx")));
  EXPECT_TRUE(exists(pathOf("Budget.docx")));
  EXPECT_EQ(plan->path, pathOf("Plan.docx"));
}

}  // namespace
}  // namespace pellar
