#include <tuple>
#include <utility>

#include "platform/sim/office/ScriptError.h"
#include "tests/app/automation/AutomationStory.h"
#include "tests/support/BrokenFileOperations.h"

namespace pellar {
namespace {

// Where a rename is cut, in the order things happen.
enum class Moment {
  whileAskedForTheDocuments,
  beforeTheDocumentIsFound,
  afterTheDocumentIsFound,
  beforeTheSave,
  inTheMiddleOfTheSave,
  afterTheSave,
  whileAskedAgain,
  beforeTheFlush,
  beforeTheFolderIsFlushed,
  beforeTheOldFileIsRemoved,
};
// What cuts it.
enum class Mishap {
  anError,
  wordQuits,
  wordFreezes,
  wordFreezesForAWhile,
  theDocumentIsClosed,
  theNewFileVanishes,
  theOldFileVanishes,
};

std::string nameOf(Moment moment) {
  static const std::vector<std::string> names{"WhileAskedForTheDocuments", "BeforeTheDocumentIsFound",
                                              "AfterTheDocumentIsFound",   "BeforeTheSave",
                                              "InTheMiddleOfTheSave",      "AfterTheSave",
                                              "WhileAskedAgain",           "BeforeTheFlush",
                                              "BeforeTheFolderIsFlushed",  "BeforeTheOldFileIsRemoved"};
  return names.at(static_cast<std::size_t>(moment));
}

std::string nameOf(Mishap mishap) {
  static const std::vector<std::string> names{"AnError",
                                              "WordQuits",
                                              "WordFreezes",
                                              "WordFreezesForAWhile",
                                              "TheDocumentIsClosed",
                                              "TheNewFileVanishes",
                                              "TheOldFileVanishes"};
  return names.at(static_cast<std::size_t>(mishap));
}

void PrintTo(Moment moment, std::ostream* stream) {
  *stream << nameOf(moment);
}

void PrintTo(Mishap mishap, std::ostream* stream) {
  *stream << nameOf(mishap);
}

class RenameInterrupted : public AutomationStory,
                          public testing::WithParamInterface<std::tuple<Moment, Mishap>> {
 protected:
  static constexpr const char* before = "what stood there";
  static constexpr const char* after = "what stood there, and more";

  RenameInterrupted() {
    document = mac.office().openInWindow(word, {.path = oldPath, .content = before});
    SimOffice::edit(*document, after);
    mac.office().beforeEvent = [this](const std::string& event) {
      if (event == "save as") return at(Moment::beforeTheSave);
      if (event.starts_with("get first document")) return at(Moment::beforeTheDocumentIsFound);
      at(saved ? Moment::whileAskedAgain : Moment::whileAskedForTheDocuments);
    };
    mac.office().afterEvent = [this](const std::string& event) {
      saved = saved || event == "save as";
      if (event == "save as") at(Moment::afterTheSave);
      if (event.starts_with("get first document")) at(Moment::afterTheDocumentIsFound);
    };
    mac.office().duringWrite = [this](const std::string&) { at(Moment::inTheMiddleOfTheSave); };
    files.before = [this](std::string_view step) {
      return step == "flushFile"     ? atStep(Moment::beforeTheFlush)
             : step == "flushFolder" ? atStep(Moment::beforeTheFolderIsFlushed)
                                     : atStep(Moment::beforeTheOldFileIsRemoved);
    };
  }

  [[nodiscard]] bool oldIsWhole() const { return contentOf(oldPath) == before; }
  [[nodiscard]] bool newIsWhole() const { return contentOf(newPath) == after; }
  // Were the power to fail now, this is what the user would find.
  void expectAFile() const {
    EXPECT_TRUE(oldIsWhole() || newIsWhole())
        << "old: " << contentOf(oldPath) << ", new: " << contentOf(newPath);
  }

  void at(Moment moment) {
    reached.push_back(moment);
    if (moment == std::get<Moment>(GetParam()) && !std::exchange(happened, true)) happen();
    if (!oldFileTaken) expectAFile();
  }
  std::error_code atStep(Moment moment) {
    try {
      at(moment);
    } catch (const ScriptError&) {
      return std::make_error_code(std::errc::io_error);
    }
    return {};
  }
  void happen() {
    switch (std::get<Mishap>(GetParam())) {
      case Mishap::anError:
        throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
      case Mishap::wordQuits:
        return mac.terminate(word);
      case Mishap::wordFreezes:
        return word.freeze();
      case Mishap::wordFreezesForAWhile:
        word.freeze();
        thaw = mac.mainLoop().after(std::chrono::seconds(30), [this] { word.resume(); });
        return;
      case Mishap::theDocumentIsClosed:
        return mac.office().close(document);
      case Mishap::theNewFileVanishes:
        std::filesystem::remove(newPath);
        return;
      case Mishap::theOldFileVanishes:
        // Somebody else takes it; what is left to us is not to lose the new one.
        oldFileTaken = true;
        std::filesystem::remove(oldPath);
        return;
    }
  }

  std::string oldPath = inFolder("Old.docx");
  std::string newPath = inFolder("New.docx");
  SimDocumentPointer document;
  test::BrokenFileOperations files;
  Automation watched{mac.platform(), files};
  std::vector<Moment> reached;
  bool saved = false;
  bool happened = false;
  bool oldFileTaken = false;
  Subscription thaw;
};

TEST_P(RenameInterrupted, LeavesAFileWhateverHappens) {
  const auto renamed = watched.rename(*record(*document->window), oldPath, "New");
  EXPECT_NE(std::find(reached.begin(), reached.end(), std::get<Moment>(GetParam())), reached.end());
  if (oldFileTaken) {
    EXPECT_EQ(renamed.has_value(), newIsWhole());
    return;
  }
  expectAFile();
  if (renamed) {
    EXPECT_EQ(renamed, newPath);
    EXPECT_TRUE(newIsWhole());
  } else {
    EXPECT_TRUE(oldIsWhole());
  }
}

// A new file that vanishes when the old one is just about to go is another program's doing that no order of
// steps can answer; everything up to there is here.
std::vector<std::tuple<Moment, Mishap>> everyCut() {
  std::vector<std::tuple<Moment, Mishap>> cuts;
  for (int moment = 0; moment <= static_cast<int>(Moment::beforeTheOldFileIsRemoved); ++moment) {
    for (int mishap = 0; mishap <= static_cast<int>(Mishap::theOldFileVanishes); ++mishap) {
      const std::tuple cut(static_cast<Moment>(moment), static_cast<Mishap>(mishap));
      if (cut != std::tuple(Moment::beforeTheOldFileIsRemoved, Mishap::theNewFileVanishes))
        cuts.push_back(cut);
    }
  }
  return cuts;
}

INSTANTIATE_TEST_SUITE_P(EveryCut, RenameInterrupted, testing::ValuesIn(everyCut()),
                         [](const testing::TestParamInfo<std::tuple<Moment, Mishap>>& cut) {
                           return nameOf(std::get<Moment>(cut.param)) + nameOf(std::get<Mishap>(cut.param));
                         });

}  // namespace
}  // namespace pellar
