// What a user does with the package: installs it on a bare system, uses it, upgrades and removes it.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/e2e/DesktopTest.h"
#include "tests/package/CleanRoot.h"
#include "tests/package/Packages.h"

namespace pellar::e2e {

namespace {

class ThePackage : public DesktopTest {
 protected:
  void SetUp() override {
    if (const auto reason = CleanRoot::prepare(packages().roots)) GTEST_SKIP() << *reason;
    root.emplace(packages().roots);
  }

  // The user of that system starts it on the desktop, on which nothing else comes from there.
  void startInstalled() {
    pellar = desktop.start(root->inside({"setpriv", "--reuid=user", "--regid=user", "--init-groups", "env",
                                         "-i", "HOME=/home/user", "DISPLAY=" + desktop.display(),
                                         "DBUS_SESSION_BUS_ADDRESS=disabled:", "pellar"}),
                           "pellar");
  }

  // What is in the state file of that user.
  [[nodiscard]] std::string usersState() const {
    return Folders::read(*root / "home/user/.local/share/Pellar/state.json");
  }
  [[nodiscard]] std::string installedVersion() const {
    return root->run({"dpkg-query", "--show", "--showformat=${Version}", "pellar"});
  }
  // The files that the package brought and that are there.
  [[nodiscard]] std::vector<std::string> filesOf(const std::string& list) const {
    std::vector<std::string> found;
    std::istringstream lines(list);
    for (std::string line; std::getline(lines, line);)
      if (std::filesystem::is_regular_file(*root / line.substr(1))) found.push_back(line);
    return found;
  }

  std::optional<CleanRoot> root;
};

TEST_F(ThePackage, IsInstalledStartedUpgradedAndRemovedAndTheUsersStateStays) {
  const auto terminal =
      desktop.start({"xterm", "-T", "Report", "-geometry", "80x24+200+200", "-e", "cat"}, "xterm");
  const auto report = desktop.waitForWindow("Report");

  root->install(packages().older);
  const auto olderVersion = installedVersion();
  startInstalled();
  acceptTerms();
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
  desktop.observer().waitUntil("the answer is kept",
                               [&] { return usersState().find("acceptedEulaVersion") != std::string::npos; });

  // The copy that runs goes on as if nothing had happened.
  root->install(packages().newer);
  EXPECT_EQ(root->run({"dpkg", "--compare-versions", installedVersion(), "gt", olderVersion}), "");
  desktop.move(report, 300, 300);
  strip.waitUntilOver(report);
  stopPellar();
  const auto stateBefore = usersState();
  startInstalled();
  strip.waitUntilOver(report);
  strip.waitUntilTabs(1);
  stopPellar();
  EXPECT_EQ(usersState(), stateBefore);

  const auto files = root->run({"dpkg", "--listfiles", "pellar"});
  EXPECT_NE(files.find("/usr/bin/pellar"), std::string::npos);
  root->run({"apt-get", "remove", "-q", "-y", "pellar"});
  EXPECT_EQ(filesOf(files), std::vector<std::string>{});
  EXPECT_EQ(usersState(), stateBefore);
  root->install(packages().newer);
  root->run({"apt-get", "purge", "-q", "-y", "pellar"});
  EXPECT_EQ(filesOf(files), std::vector<std::string>{});
  EXPECT_EQ(usersState(), stateBefore);
}

}  // namespace

}  // namespace pellar::e2e
