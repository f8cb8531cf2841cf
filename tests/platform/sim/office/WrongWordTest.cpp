#include <gtest/gtest.h>

#include <cctype>
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

// Whether an application with a document and a folder to save into does what the script says.
bool succeeds(OfficeApp app, const std::string& script) {
  SimMac mac;
  const auto office = mac.launch({.bundleId = std::string(bundleID(app))});
  mac.office().open(office, {.path = mac.home() / "Old.docx"});
  std::string placed = script;
  if (const auto home = placed.find("/HOME"); home != std::string::npos)
    placed.replace(home, 5, mac.home().string());
  return !mac.scripts().run(placed).error;
}

void expectEveryWordToMatter(OfficeApp app, const std::string& script) {
  EXPECT_TRUE(succeeds(app, script)) << script;
  for (const auto& [place, length] : wordsOf(script)) {
    std::string wrong = script;
    wrong.replace(place, length, "wrong");
    EXPECT_FALSE(succeeds(app, wrong)) << wrong;
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
