#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "app/automation/OfficeScripts.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

// The places of the words of a script, texts in quotes among them as one word each.
std::vector<std::pair<std::size_t, std::size_t>> wordsOf(const std::string& script) {
  std::vector<std::pair<std::size_t, std::size_t>> words;
  for (std::size_t place = 0; place < script.size();) {
    std::size_t end = place + 1;
    if (script[place] == '"') {
      while (script[end] != '"') ++end;
      if (end > place + 1) words.emplace_back(place + 1, end - place - 1);
      ++end;
    } else if (std::isalnum(static_cast<unsigned char>(script[place])) != 0) {
      while (end < script.size() && std::isalnum(static_cast<unsigned char>(script[end])) != 0) ++end;
      words.emplace_back(place, end - place);
    }
    place = end;
  }
  return words;
}

// What the user sees of a script's work, on a Mac of its own each time.
std::string outcome(OfficeApp app, const std::string& script) {
  SimMac mac;
  const auto office = mac.launch({.bundleId = std::string(bundleID(app))});
  const std::string folder = mac.home().string();
  const auto inFolder = [&](const std::string& text) {
    std::string placed = text;
    for (auto at = placed.find("/HOME"); at != std::string::npos; at = placed.find("/HOME"))
      placed.replace(at, 5, folder);
    return placed;
  };
  if (app != OfficeApp::outlook) {
    mac.office().open(office, {.name = "never saved", .saved = false});
    mac.office().openInWindow(office, {.path = folder + "/Old.docx"});
    SimOffice::edit(*mac.office().openInWindow(office, {.path = folder + "/Plan.docx"}), "changed");
    mac.office().open(office, {.path = folder + "/Broken.docx", .raises = true});
  }
  mac.launch({.bundleId = "org.example.editor"});

  const auto result = mac.scripts().run(inFolder(script));
  std::string seen = result.error ? "error" : "done";
  if (result.descriptor) {
    seen += " " + result.descriptor->stringValue().value_or("list");
    for (const auto& item : result.descriptor->items()) {
      const std::string text = item.stringValue().value_or("?");
      const auto at = text.find(folder);
      seen +=
          ", " +
          (at == std::string::npos ? text : text.substr(0, at) + "/HOME" + text.substr(at + folder.size()));
    }
  }
  for (const auto& document : mac.office().documents(office)) {
    seen += "\n" + document->name + (document->window ? " in a window, " : ", ") +
            std::to_string(document->saves) + " saves";
  }
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path());
    if (entry.is_regular_file())
      files[entry.path().filename().string()] = std::string(std::istreambuf_iterator<char>(file), {});
  }
  for (const auto& [name, content] : files) seen += "\n" + name + ": " + content;
  seen += "\ndialogs: " + std::to_string(mac.office().saveDialogs());
  const auto front = mac.frontWindow();
  return seen + "\nin front: " + (front ? front->title() : "nothing");
}

void expectEveryWordToMatter(OfficeApp app, const std::string& script) {
  const std::string right = outcome(app, script);
  EXPECT_EQ(right.find("error"), std::string::npos) << right;
  EXPECT_EQ(outcome(app, script), right) << "the same each time";
  for (const auto& [place, length] : wordsOf(script)) {
    std::string wrong = script;
    wrong.replace(place, length, "wrong");
    EXPECT_NE(outcome(app, wrong), right) << wrong;
  }
}

TEST(WrongWord, InTheLookUpOfPathsIsNoticed) {
  for (const OfficeApp app : {OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint})
    expectEveryWordToMatter(app, *OfficeScripts::pathsByName(app));
}

TEST(WrongWord, InSavingIsNoticed) {
  for (const OfficeApp app : {OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint}) {
    expectEveryWordToMatter(app, *OfficeScripts::saveAll(app, true));
    expectEveryWordToMatter(app, *OfficeScripts::saveAll(app, false));
  }
}

TEST(WrongWord, InMakingADocumentIsNoticed) {
  for (const OfficeApp app : allOfficeApps) expectEveryWordToMatter(app, OfficeScripts::newDocument(app));
}

TEST(WrongWord, InSavingUnderAnotherNameIsNoticed) {
  for (const OfficeApp app : {OfficeApp::word, OfficeApp::excel, OfficeApp::powerpoint})
    expectEveryWordToMatter(app, *OfficeScripts::saveAs(app, "Old.docx", "/HOME/New.docx"));
}

}  // namespace
}  // namespace pellar
