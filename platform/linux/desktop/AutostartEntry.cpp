#include "platform/linux/desktop/AutostartEntry.h"

#include <fstream>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/AtomicFile.h"
#include "core/FileOperations.h"

namespace pellar {
namespace {

// The Desktop Entry Specification: an argument in double quotes, in which some characters are escaped by a
// backslash, as a value in which every backslash is doubled. A percent sign begins a field code unless
// doubled.
std::string quotedForExec(const std::string& argument) {
  std::string text = "\"";
  for (const char each : argument) {
    if (each == '\\') {
      text += "\\\\\\\\";
    } else if (each == '"' || each == '`' || each == '$') {
      text += "\\\\";
      text += each;
    } else if (each == '%') {
      text += "%%";
    } else {
      text += each;
    }
  }
  return text + "\"";
}

}  // namespace

AutostartEntry::AutostartEntry(const std::filesystem::path& configFolder, std::filesystem::path program)
    : file_(configFolder / "autostart" / "app.pellar.Pellar.desktop"), program_(std::move(program)) {}

LoginItemStatus AutostartEntry::status() const {
  std::ifstream entry(file_);
  bool begun = false;
  for (std::string line; std::getline(entry, line);) {
    if (line == "[Desktop Entry]") begun = true;
    if (line == "Hidden=true" || line == "X-GNOME-Autostart-enabled=false")
      return LoginItemStatus::notRegistered;
  }
  return begun ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

std::optional<std::string> AutostartEntry::setEnabled(bool enabled) {
  if (!enabled) {
    std::error_code error;
    std::filesystem::remove(file_, error);
    if (error) return file_.string() + ": " + error.message();
    return std::nullopt;
  }
  const std::string program = program_.string();
  if (program.empty()) return "nothing tells where the program is";
  if (program.find_first_of("\n\r") != std::string::npos)
    return "the program's path has a line break, which no entry can name";
  return AtomicFile(file_, systemFileOperations())
      .replace("[Desktop Entry]\nType=Application\nName=Pellar\nComment=Tabs for every window\nExec=" +
               quotedForExec(program) + "\nTerminal=false\n");
}

}  // namespace pellar
