#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <string>

#include "platform/linux/desktop/AutostartEntry.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/EveryStep.h"

namespace pellar {
namespace {

class Autostart : public testing::Test {
 protected:
  [[nodiscard]] std::filesystem::path file() const {
    return folder / "config" / "autostart" / "app.pellar.Pellar.desktop";
  }
  [[nodiscard]] std::string content() const {
    std::ifstream stream(file());
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  void write(const std::string& text) const {
    std::filesystem::create_directories(file().parent_path());
    std::ofstream(file()) << text;
  }
  [[nodiscard]] AutostartEntry entryOf(const std::string& program) const {
    return AutostartEntry(folder / "config", program);
  }

  TemporaryFolder folder;
};

TEST_F(Autostart, IsWrittenAndTakenAway) {
  auto entry = entryOf("/usr/bin/pellar");
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(entry.setEnabled(true), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::enabled);
  EXPECT_EQ(content(),
            "[Desktop Entry]\nType=Application\nName=Pellar\nComment=Tabs for every window\n"
            "Exec=\"/usr/bin/pellar\"\nTerminal=false\n");
  EXPECT_EQ(entry.setEnabled(false), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_FALSE(std::filesystem::exists(file()));
  EXPECT_EQ(entry.setEnabled(false), std::nullopt) << "what is not there is gone";
}

TEST_F(Autostart, OddPathsAreQuotedAsDesktopEntriesAskForIt) {
  EXPECT_EQ(entryOf("/opt/My Apps/100% \"p\" $x `y` \\z").setEnabled(true), std::nullopt);
  EXPECT_NE(content().find("Exec=\"/opt/My Apps/100%% \\\\\"p\\\\\" \\\\$x \\\\`y\\\\` \\\\\\\\z\"\n"),
            std::string::npos)
      << content();
}

TEST_F(Autostart, APipeInPlaceOfTheEntryKeepsNobodyWaitingAndStays) {
  std::filesystem::create_directories(file().parent_path());
  ASSERT_EQ(mkfifo(file().c_str(), 0600), 0);
  auto entry = entryOf("/usr/bin/pellar");
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_NE(entry.setEnabled(true), std::nullopt);
  EXPECT_TRUE(std::filesystem::is_fifo(file()));
}

TEST_F(Autostart, APathWithALineBreakIsRefused) {
  auto entry = entryOf("/opt/a\nHidden=true");
  EXPECT_NE(entry.setEnabled(true), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Autostart, AProgramThatDoesNotKnowWhereItIsIsNotEntered) {
  auto entry = entryOf("");
  const auto failure = entry.setEnabled(true);
  ASSERT_TRUE(failure.has_value());
  EXPECT_FALSE(failure->empty());
  EXPECT_FALSE(std::filesystem::exists(file()));
  EXPECT_EQ(entry.setEnabled(false), std::nullopt);
}

TEST_F(Autostart, WhatTheDesktopSwitchedOffDoesNotCount) {
  for (const auto* off : {"Hidden=true", "Hidden = true", "X-GNOME-Autostart-enabled=false",
                          "X-MATE-Autostart-enabled=false", "\tX-MATE-Autostart-enabled =\tfalse \r"}) {
    write(std::string("[Desktop Entry]\nType=Application\nExec=pellar\n") + off + "\n");
    EXPECT_EQ(entryOf("/usr/bin/pellar").status(), LoginItemStatus::notRegistered) << off;
    EXPECT_EQ(entryOf("/usr/bin/pellar").setEnabled(true), std::nullopt);
    EXPECT_EQ(entryOf("/usr/bin/pellar").status(), LoginItemStatus::enabled) << off;
  }
}

TEST_F(Autostart, WhatSaysThatItIsOnAndWhatIsMeantForSomethingElseDoesNotSwitchItOff) {
  for (const auto* on : {"Hidden=false", "X-GNOME-Autostart-enabled=true", "X-MATE-Autostart-enabled = true",
                         "#Hidden=true", "NotHidden=true", "[Desktop Action quit]\nHidden=true"}) {
    write(std::string("[Desktop Entry]\nType=Application\nExec=pellar\n") + on + "\n");
    EXPECT_EQ(entryOf("/usr/bin/pellar").status(), LoginItemStatus::enabled) << on;
  }
  write("[Something Else]\nExec=pellar\n");
  EXPECT_EQ(entryOf("/usr/bin/pellar").status(), LoginItemStatus::notRegistered);
}

TEST_F(Autostart, AnEntryThatTheUserChangedIsSwitchedOffAndOnAndNeverLost) {
  const std::string own =
      "# mine\n[Desktop Entry]\nType=Application\nName=Tabs\nExec=env LANG=C pellar\n"
      "X-Delay=5\n\n[Desktop Action quit]\nName=Quit\nHidden=true\n";
  write(own);
  auto entry = entryOf("/usr/bin/pellar");
  ASSERT_EQ(entry.status(), LoginItemStatus::enabled);
  EXPECT_EQ(entry.setEnabled(false), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_NE(content().find("Exec=env LANG=C pellar\n"), std::string::npos) << content();
  EXPECT_EQ(entry.setEnabled(false), std::nullopt);
  EXPECT_EQ(entry.setEnabled(true), std::nullopt);
  EXPECT_EQ(entry.status(), LoginItemStatus::enabled);
  EXPECT_EQ(content(), own);
}

TEST_F(Autostart, AnUnchangedEntryOfAProgramThatHasMovedNamesTheNewPlace) {
  EXPECT_EQ(entryOf("/old/pellar").setEnabled(true), std::nullopt);
  const auto before = content();
  write("[Desktop Entry]\nHidden=true\n" + before.substr(before.find('\n') + 1));
  auto entry = entryOf("/usr/bin/pellar");
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
  EXPECT_EQ(entry.setEnabled(true), std::nullopt);
  EXPECT_NE(content().find("Exec=\"/usr/bin/pellar\"\n"), std::string::npos) << content();
  EXPECT_EQ(entry.setEnabled(false), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(file()));
}

TEST_F(Autostart, AFailureIsSaidAndChangesNothing) {
  std::ofstream(folder / "config") << "in the way";
  auto entry = entryOf("/usr/bin/pellar");
  const auto failure = entry.setEnabled(true);
  ASSERT_TRUE(failure.has_value());
  EXPECT_FALSE(failure->empty());
  EXPECT_EQ(entry.status(), LoginItemStatus::notRegistered);
}

// Whatever happens at whatever step, the next login finds the entry as it was or as it was to be.
TEST_F(Autostart, AtEveryStepTheOldEntryOrTheNewIsWhole) {
  ASSERT_EQ(entryOf("/opt/old/pellar").setEnabled(true), std::nullopt);
  const std::string old = content();
  ASSERT_EQ(entryOf("/usr/bin/pellar").setEnabled(true), std::nullopt);
  const std::string written = content();
  const std::string users = written + "Comment[de]=Reiter\n";
  struct Change {
    std::string before;
    bool enabled;
    std::string after;
  };
  for (const auto mishap : test::everyMishap) {
    for (const Change& change :
         {Change{"", true, written}, Change{old, true, written}, Change{old, false, ""},
          Change{users, false, "[Desktop Entry]\nHidden=true\n" + users.substr(16)}}) {
      bool changedWholly = false;
      test::tellWithEveryStepHit(
          mishap, {.prepare =
                       [&] {
                         std::filesystem::remove_all(folder / "config");
                         if (!change.before.empty()) write(change.before);
                       },
                   .work =
                       [&](test::BrokenFileOperations& operations) {
                         AutostartEntry entry(folder / "config", "/usr/bin/pellar", operations);
                         static_cast<void>(entry.setEnabled(change.enabled));
                       },
                   .check =
                       [&](const std::string& where) {
                         EXPECT_TRUE(content() == change.before || content() == change.after)
                             << where << content();
                         changedWholly = content() == change.after;
                       }});
      EXPECT_TRUE(changedWholly) << "the last time nothing was in the way";
    }
  }
}

}  // namespace
}  // namespace pellar
