#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/applications/DesktopEntries.h"
#include "tests/e2e/Folders.h"

namespace pellar {
namespace {

class DesktopEntriesTest : public ::testing::Test {
 protected:
  void install(const std::string& folder, const std::string& file, const std::string& content) {
    folders.write(folders.root() / folder / "applications" / file, content);
  }
  std::optional<DesktopEntry> find(const std::string& windowClass) {
    return DesktopEntries({folders.root() / "own", folders.root() / "system"}).forWindowClass(windowClass);
  }
  std::string idOf(const std::string& windowClass) { return find(windowClass).value_or(DesktopEntry{}).id; }

  e2e::Folders folders;
};

TEST_F(DesktopEntriesTest, FindsAnEntryByTheClassThatItNames) {
  install("system", "org.example.Writer.desktop",
          "# comment\n[Desktop Entry]\nType=Application\nName = Example Writer\nStartupWMClass=writer-bin\n"
          "[Desktop Action new]\nName=New\n");
  EXPECT_EQ(idOf("Writer-Bin"), "org.example.Writer");
  EXPECT_EQ(find("writer-bin")->name, "Example Writer");
}

TEST_F(DesktopEntriesTest, FindsAnEntryByItsOwnNameOrThatNamesEnd) {
  install("system", "org.example.Pad.desktop", "[Desktop Entry]\nName=Pad\n");
  install("system", "xterm.desktop", "[Desktop Entry]\r\nName=XTerm\r\n");
  EXPECT_EQ(idOf("Pad"), "org.example.Pad");
  EXPECT_EQ(idOf("XTerm"), "xterm");
  EXPECT_EQ(find("XTerm")->name, "XTerm");
  EXPECT_EQ(idOf("example"), "");
  EXPECT_EQ(idOf(""), "");
}

TEST_F(DesktopEntriesTest, APipeAmongTheEntriesKeepsNobodyWaiting) {
  install("system", "pad.desktop", "[Desktop Entry]\nName=Pad\n");
  const auto pipe = folders.root() / "system" / "applications" / "a-pipe.desktop";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(idOf("pad"), "pad");
}

TEST_F(DesktopEntriesTest, KnowsATerminalByItsCategory) {
  install("system", "term.desktop", "[Desktop Entry]\nName=Term\nCategories = System;TerminalEmulator ;\n");
  install("system", "last.desktop", "[Desktop Entry]\nName=Last\nCategories=TerminalEmulator\n");
  install("system", "pad.desktop", "[Desktop Entry]\nName=Pad\nCategories=Utility;TerminalEmulators;\n");
  EXPECT_TRUE(find("Term")->isTerminal);
  EXPECT_TRUE(find("Last")->isTerminal);
  EXPECT_FALSE(find("Pad")->isTerminal);
}

TEST_F(DesktopEntriesTest, TheUsersOwnEntryWins) {
  install("system", "pad.desktop", "[Desktop Entry]\nName=System's\n");
  install("own", "pad.desktop", "[Desktop Entry]\nName=Mine\n");
  EXPECT_EQ(find("pad")->name, "Mine");
}

TEST_F(DesktopEntriesTest, AFolderBecomesPartOfTheName) {
  install("system", "kde/viewer.desktop", "[Desktop Entry]\nName=Viewer\n");
  EXPECT_EQ(idOf("kde-viewer"), "kde-viewer");
}

TEST_F(DesktopEntriesTest, LinksAndBrokenFilesAreNoApplications) {
  install("system", "page.desktop", "[Desktop Entry]\nType=Link\nName=Page\n");
  install("system", "empty.desktop", "");
  install("system", "binary.desktop", std::string("\0\xff\xfe[", 4));
  EXPECT_EQ(idOf("page"), "");
  EXPECT_EQ(idOf("empty"), "");
  EXPECT_EQ(idOf("binary"), "");
}

TEST_F(DesktopEntriesTest, MissingFoldersAreNoError) {
  EXPECT_EQ(idOf("anything"), "");
}

}  // namespace
}  // namespace pellar
