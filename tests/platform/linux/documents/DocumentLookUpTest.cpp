#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "core/FileUrl.h"
#include "platform/linux/documents/DocumentLookUp.h"
#include "platform/sim/system/TemporaryFolder.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;

// A file system with a home, and processes that have files open and were started with others.
class DocumentLookUpTest : public ::testing::Test {
 protected:
  DocumentLookUpTest() {
    fs::create_directories(home());
    startProcess({"/usr/bin/editor"}, home());
  }

  [[nodiscard]] fs::path home() const { return root / "home" / "ann"; }
  [[nodiscard]] fs::path process() const { return root / "processes" / std::to_string(pid); }
  std::string file(const fs::path& path) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "text";
    return path.string();
  }
  void startProcess(const std::vector<std::string>& arguments, const fs::path& folder) {
    fs::remove_all(process());
    fs::create_directories(process() / "fd");
    std::ofstream line(process() / "cmdline", std::ios::binary);
    for (const auto& argument : arguments) line << argument << '\0';
    fs::create_symlink(folder, process() / "cwd");
  }
  void open(const std::string& target) {
    fs::create_symlink(target, process() / "fd" / std::to_string(++lastDescriptor));
  }
  [[nodiscard]] DocumentLookUp::FileFinder finder() const {
    return DocumentLookUp::FileFinder({.home = home(), .processes = root / "processes"});
  }
  [[nodiscard]] std::optional<std::string> find(const std::string& title) const {
    return finder().find(title, pid);
  }

  static constexpr ProcessId pid = 4711;
  TemporaryFolder temporary;
  fs::path root = temporary.path();
  int lastDescriptor = 2;
};

TEST_F(DocumentLookUpTest, ThePathInTheTitleIsTheDocument) {
  const auto report = file(home() / "Papers" / "report 1.txt");
  const std::string folder = (home() / "Papers").string();
  const std::vector<std::string> titles{report,
                                        report + " - Mousepad",
                                        "*" + report + " - Mousepad",
                                        report + " — Editor",
                                        report + "*",
                                        "● " + report + " – Editor",
                                        "~/Papers/report 1.txt",
                                        "*~/Papers/report 1.txt - Editor",
                                        report + " [Read Only] - Editor",
                                        "Editor - " + report,
                                        "report 1.txt (" + folder + ")",
                                        "report 1.txt (~/Papers) - gedit",
                                        "*report 1.txt (~/Papers) - gedit",
                                        "report 1.txt + (~/Papers) - VIM",
                                        "report 1.txt - ~/Papers - Geany",
                                        "report 1.txt [Read-Only] (~/Papers) - gedit"};
  for (const auto& title : titles) {
    EXPECT_EQ(find(title), report) << title;
  }
}

TEST_F(DocumentLookUpTest, ANameMayHoldWhatTitlesAreMadeOf) {
  for (const std::string name : {"a - b.txt", "a - b - Mousepad", "a (old).txt", "a (old)", "*a.txt", "a [1]",
                                 "a +", "caf\xe9", "d\xc3\xa9j\xc3\xa0.txt"}) {
    const auto path = file(home() / "odd" / name);
    EXPECT_EQ(find(path + " - Mousepad"), path);
    EXPECT_EQ(find(name + " (~/odd) - gedit"), path);
  }
}

TEST_F(DocumentLookUpTest, ATitleThatNamesNoFileHasNone) {
  fs::create_directories(home() / "Papers");
  const std::vector<std::string> titles{"",
                                        "Untitled 1",
                                        "ann@desk: ~/Papers",
                                        home().string(),
                                        "/nowhere/at/all.txt - Mousepad",
                                        "/",
                                        "~",
                                        "()",
                                        " ()",
                                        "a (~)",
                                        ".. (/)",
                                        "* * * - - - | |",
                                        "/dev/null",
                                        "\xff\xfe (\xc3)",
                                        std::string(100000, '/'),
                                        std::string(3000, '-') + " - " + std::string(1000, ' '),
                                        std::string("a\0b", 3)};
  for (const auto& title : titles) {
    EXPECT_EQ(find(title), std::nullopt) << title.substr(0, 80);
  }
}

TEST_F(DocumentLookUpTest, OfManyPartsTheFirstAreRead) {
  const auto report = file(home() / "report.txt");
  std::string title = report;
  for (int part = 0; part < 1000; ++part) title += " - x";
  EXPECT_EQ(find(title), report);
}

TEST_F(DocumentLookUpTest, TheFileOfThatNameThatTheProgramHasOpenIsTheDocument) {
  const auto letter = file(root / "shared" / "letter.odt");
  open("/dev/null");
  open("socket:[4242]");
  open(file(root / "shared" / ".~lock.letter.odt#"));
  open(letter);
  open(letter);
  EXPECT_EQ(find("letter.odt - Writer"), letter);
  EXPECT_EQ(find("letter.odt — Writer"), letter);
  EXPECT_EQ(find("plan.odt - Writer"), std::nullopt);
  EXPECT_EQ(find("letter.odt - Writer"), letter);
  EXPECT_EQ(DocumentLookUp::FileFinder({.home = home()}).find("letter.odt - Writer", std::nullopt),
            std::nullopt);
}

TEST_F(DocumentLookUpTest, TwoOpenFilesOfThatNameAreNoAnswer) {
  open(file(root / "a" / "letter.odt"));
  open(file(root / "b" / "letter.odt"));
  EXPECT_EQ(find("letter.odt - Writer"), std::nullopt);
}

TEST_F(DocumentLookUpTest, WhatIsDeletedOrNoFileIsNoDocument) {
  open((root / "gone.odt").string());
  open((root / "letter.odt").string() + " (deleted)");
  fs::create_directories(root / "folder.odt");
  open((root / "folder.odt").string());
  for (const char* title : {"gone.odt", "letter.odt", "folder.odt"}) EXPECT_EQ(find(title), std::nullopt);
}

TEST_F(DocumentLookUpTest, TheFileThatTheProgramWasStartedWithIsTheDocument) {
  const auto plan = file(home() / "plan.txt");
  const auto notes = file(root / "my notes.txt");
  startProcess({"/usr/bin/plan.txt", "--new-window", "plan.txt", fileUrlOf(notes), "../ann/plan.txt"},
               home());
  EXPECT_EQ(find("plan.txt - Editor"), plan);
  EXPECT_EQ(find("my notes.txt - Editor"), notes);
  EXPECT_EQ(find("--new-window - Editor"), std::nullopt);
}

TEST_F(DocumentLookUpTest, TwoArgumentsOfThatNameAreNoAnswer) {
  startProcess({"editor", file(root / "a" / "plan.txt"), file(root / "b" / "plan.txt")}, home());
  EXPECT_EQ(find("plan.txt - Editor"), std::nullopt);
}

TEST_F(DocumentLookUpTest, AProcessThatIsGoneOrSecretHasNone) {
  fs::remove_all(process());
  EXPECT_EQ(find("plan.txt - Editor"), std::nullopt);
  EXPECT_EQ(DocumentLookUp::FileFinder({.home = home()}).find("environ", 1), std::nullopt);
}

TEST_F(DocumentLookUpTest, ThisVeryProcessCanBeLookedUp) {
  const auto report = file(home() / "kept open.txt");
  std::ifstream stream(report);
  EXPECT_EQ(DocumentLookUp::FileFinder({.home = home()}).find("kept open.txt - Editor", getpid()), report);
}

}  // namespace
}  // namespace pellar
