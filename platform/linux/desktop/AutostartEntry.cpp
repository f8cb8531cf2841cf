#include "platform/linux/desktop/AutostartEntry.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/AtomicFile.h"
#include "platform/linux/x11/ConfigText.h"

namespace pellar {
namespace {

using ConfigText::trimmed;

constexpr std::size_t largestEntry = 1U << 20U;

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

// A line of the entry that starts the program: other groups of the file are for other things.
struct Line {
  std::string text;
  bool isHeader = false;  // the line that begins the entry
  std::string_view key;   // of a line in the entry; empty where there is none
  std::string_view value;

  // Whether it is one by which a desktop's settings switch an entry on and off.
  [[nodiscard]] bool isSwitch() const { return key == "Hidden" || key == gnomeKey || key == mateKey; }
  [[nodiscard]] bool switchesOff() const { return value == (key == "Hidden" ? "true" : "false"); }

  static constexpr std::string_view gnomeKey = "X-GNOME-Autostart-enabled";
  static constexpr std::string_view mateKey = "X-MATE-Autostart-enabled";
};

// The lines of `text`, to which they refer.
std::vector<Line> linesOf(std::string_view text) {
  std::vector<Line> lines;
  bool inEntry = false;
  bool begun = false;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto content = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    Line line{.text = std::string(content), .key = {}, .value = {}};
    const auto bare = trimmed(content);
    const auto equals = content.find('=');
    if (bare.starts_with('[')) {
      inEntry = !begun && bare == "[Desktop Entry]";
      line.isHeader = inEntry;
      begun = begun || inEntry;
    } else if (inEntry && !bare.starts_with('#') && equals != std::string_view::npos) {
      line.key = trimmed(content.substr(0, equals));
      line.value = trimmed(content.substr(equals + 1));
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

bool hasEntry(const std::vector<Line>& lines) {
  return std::ranges::any_of(lines, &Line::isHeader);
}

std::string entryFor(const std::string& program) {
  return "[Desktop Entry]\nType=Application\nName=Pellar\nComment=Tabs for every window\nExec=" +
         quotedForExec(program) + "\nTerminal=false\n";
}

// Whether nothing but desktops' switches was changed in an entry that was written for this or another
// program.
bool isAsWritten(const std::vector<Line>& lines) {
  const std::string written = entryFor("");
  const auto expected = linesOf(written);
  std::size_t at = 0;
  for (const auto& line : lines) {
    if (line.isSwitch()) continue;
    if (at == expected.size()) return false;
    const auto& wanted = expected[at++];
    if (wanted.key == "Exec" ? line.key != "Exec" : line.text != wanted.text) return false;
  }
  return at == expected.size();
}

// The same entry, switched by nothing, or off.
std::string switched(const std::vector<Line>& lines, bool on) {
  std::string text;
  for (const auto& line : lines) {
    if (line.isSwitch()) continue;
    text += line.text + "\n";
    if (line.isHeader && !on) text += "Hidden=true\n";
  }
  return text;
}

}  // namespace

AutostartEntry::AutostartEntry(const std::filesystem::path& configFolder, std::filesystem::path program,
                               FileOperations& operations)
    : file_(configFolder / "autostart" / "app.pellar.Pellar.desktop"),
      program_(std::move(program)),
      operations_(operations) {}

std::error_code AutostartEntry::read(std::string& text) const {
  const auto error = operations_.read(file_, largestEntry, text);
  if (error) text.clear();
  return error == std::errc::no_such_file_or_directory ? std::error_code() : error;
}

std::optional<std::string> AutostartEntry::write(const std::string& text) const {
  return AtomicFile(file_, operations_).replace(text);
}

std::optional<std::string> AutostartEntry::remove() const {
  if (const auto error = operations_.remove(file_)) return file_.string() + ": " + error.message();
  return std::nullopt;
}

LoginItemStatus AutostartEntry::status() const {
  std::string text;
  // No desktop makes anything of an entry that cannot be read.
  static_cast<void>(read(text));
  const auto lines = linesOf(text);
  const bool isOff =
      std::ranges::any_of(lines, [](const Line& each) { return each.isSwitch() && each.switchesOff(); });
  return hasEntry(lines) && !isOff ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

std::optional<std::string> AutostartEntry::setEnabled(bool enabled) {
  std::string text;
  if (const auto error = read(text)) return file_.string() + ": " + error.message();
  const auto lines = linesOf(text);
  const bool isUsers = hasEntry(lines) && !isAsWritten(lines);
  if (isUsers) return write(switched(lines, enabled));
  if (!enabled) return remove();
  const std::string program = program_.string();
  if (program.empty()) return "nothing tells where the program is";
  if (program.find_first_of("\n\r") != std::string::npos)
    return "the program's path has a line break, which no entry can name";
  return write(entryFor(program));
}

}  // namespace pellar
