#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "app/automation/Automation.h"
#include "app/tracking/OfficeWindow.h"
#include "platform/sim/SimMac.h"
#include "tests/support/BrokenFileOperations.h"
#include "tests/support/fuzz/FuzzInput.h"

namespace pellar {
namespace {

void check(bool holds) {
  if (!holds) std::abort();
}

ScriptDescriptor descriptorFrom(test::FuzzInput& input, int deepest) {
  const std::size_t kind = input.below(deepest > 0 ? 4 : 2);
  if (kind == 0) return {input.text()};
  if (kind == 1) return {static_cast<std::int32_t>(input.number())};
  std::vector<ScriptDescriptor> items(input.below(6));
  for (ScriptDescriptor& each : items) each = descriptorFrom(input, deepest - 1);
  return {std::move(items)};
}

// What an application may answer, true or not: an error, nothing, "ok", anything.
ScriptResult answerFrom(test::FuzzInput& input) {
  switch (input.below(5)) {
    case 0:
      return {std::nullopt, input.text()};
    case 1:
      return {};
    case 2:
      return {ScriptDescriptor{std::string("ok")}, std::nullopt};
    default:
      return {descriptorFrom(input, 3), std::nullopt};
  }
}

// Word with one document, which answers what the input says, and writes files or not as it says.
class LyingWord {
 public:
  LyingWord() {
    std::filesystem::create_directories(folder_);
    mac_.scripts().answer = [this](const std::string&) {
      if (input_->flag()) std::ofstream(to_) << (input_->flag() ? "content" : "");
      return answerFrom(*input_);
    };
  }

  void meet(test::FuzzInput& input) {
    input_ = &input;
    std::ofstream(from_) << "content";
    std::filesystem::remove(to_);
    window_.retitle(input.text());
    mac_.settle();
    checkDocuments();
    static_cast<void>(automation_.saveAll(OfficeApp::word, true));
    checkRename();
  }

 private:
  // Of what was answered only an absolute path ever counts as a file.
  void checkDocuments() {
    const auto documents = automation_.openDocuments(OfficeApp::word);
    check(documents.pathsByName().size() <= documents.all().size());
    if (const auto match = documents.match(window_.title())) check(match->path.starts_with('/'));
  }
  // Whatever was answered, the document is under one of its names: under the new one when that is said.
  void checkRename() {
    files_.steps.clear();
    files_.flushed.clear();
    const OfficeWindow record(mac_.accessibility(), window_.element(), TrackedApp::of(OfficeApp::word),
                              word_.pid());
    const auto renamed = automation_.rename(record, from_, "New.docx");
    check(std::filesystem::exists(from_) || isFilled(to_));
    if (renamed) check(*renamed == to_ && std::filesystem::exists(to_));
  }
  static bool isFilled(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return !error && size > 0;
  }

  SimMac mac_;
  std::string folder_ = (mac_.home() / "Documents").string();
  std::string from_ = folder_ + "/Old.docx";
  std::string to_ = folder_ + "/New.docx";
  SimApplication word_ =
      mac_.launch({.bundleId = std::string(bundleID(OfficeApp::word)), .name = std::string("Word")});
  SimWindow window_ = word_.open("Old.docx");
  test::BrokenFileOperations files_;
  Automation automation_{mac_.platform(), files_};
  test::FuzzInput* input_ = nullptr;
};

}  // namespace
}  // namespace pellar

// Whatever an application answers to a script, and whatever it does instead of what it was told: it is
// understood or not, and the document that was to be renamed is still there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static pellar::LyingWord word;
  pellar::test::FuzzInput input(data, size);
  word.meet(input);
  return 0;
}
