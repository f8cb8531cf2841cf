#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "platform/sim/system/TemporaryFolder.h"
#include "tests/e2e/Process.h"

namespace pellar::e2e {

// A home of one's own: home, configuration, data, state, cache and run-time folders under one temporary
// folder that goes with this object.
class Folders {
 public:
  Folders();

  [[nodiscard]] const std::filesystem::path& root() const { return root_.path(); }
  [[nodiscard]] std::filesystem::path home() const { return root_ / "home"; }
  [[nodiscard]] std::filesystem::path config() const { return root_ / "config"; }
  [[nodiscard]] std::filesystem::path dataHome() const { return root_ / "data"; }
  [[nodiscard]] std::filesystem::path stateFile() const { return root_ / "data" / "Pellar" / "state.json"; }
  [[nodiscard]] std::filesystem::path logFile() const { return root_ / "state" / "Pellar" / "Pellar.log"; }

  // Variables for a program that lives in these folders, on `display` (none when empty), without any session
  // bus.
  [[nodiscard]] Environment environment(const std::string& display) const;

  // Has text files and folders opened by commands, in which %f stands for the file. What is opened otherwise
  // depends on what is installed.
  void openTextFilesWith(const std::string& command) const;
  void openFoldersWith(const std::string& command) const;

  // Has the user of these folders be one who has accepted the terms and asks no web site for updates, as far
  // as the state file can be read. So he is from the start.
  void settleIn() const;
  // Has the user have used these files with an application, the first one last; in place of all that the
  // state file says.
  void remember(const std::vector<std::filesystem::path>& files, const std::string& application) const;

  // The command of a session bus with an address that it prints. Of what is installed on the machine it
  // starts only what these desktops are made with: assistive technology's own bus, and xfwm4's settings.
  [[nodiscard]] std::vector<std::string> busCommand() const;

  // Writes a file with all folders above it.
  void write(const std::filesystem::path& file, const std::string& content) const;
  [[nodiscard]] static std::string read(const std::filesystem::path& file);

 private:
  void setOpener(const std::string& kind, const std::string& name, const std::string& command) const;

  TemporaryFolder root_;
};

}  // namespace pellar::e2e
