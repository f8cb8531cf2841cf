#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/automation/Automation.h"
#include "app/tracking/OfficeWindow.h"
#include "platform/sim/SimMac.h"
#include "tests/support/Files.h"
#include "tests/support/LogReader.h"

namespace pellar {

// A simulated Mac with Word in front, documents in a real folder, and the program's scripts.
class AutomationStory : public testing::Test {
 protected:
  SimApplication launch(OfficeApp app) {
    return mac.launch({.bundleId = std::string(bundleID(app)), .name = std::string(scriptName(app))});
  }
  // The path of a file in the folder of documents.
  [[nodiscard]] std::string inFolder(const std::string& name) const {
    return (mac.home() / "Documents").string() + "/" + name;
  }
  // A document in Word, its file on the disk.
  SimDocumentPointer openInWord(const std::string& name) {
    return mac.office().openInWindow(word, {.path = inFolder(name)});
  }
  // The program's record of a window of Word.
  [[nodiscard]] std::shared_ptr<OfficeWindow> record(const SimWindow& window) {
    return std::make_shared<OfficeWindow>(mac.accessibility(), window.element(),
                                          TrackedApp::of(OfficeApp::word), word.pid());
  }
  [[nodiscard]] static bool exists(const std::string& path) { return std::filesystem::exists(path); }
  [[nodiscard]] static std::string contentOf(const std::string& path) { return test::content(path); }
  [[nodiscard]] std::size_t scriptErrors() const {
    return static_cast<std::size_t>(log.countStarting("applescript error: "));
  }

  LogReader log;
  SimMac mac;
  SimApplication word = launch(OfficeApp::word);
  Automation automation{mac.platform()};  // depends-on: mac
};

}  // namespace pellar
