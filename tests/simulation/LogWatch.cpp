#include "tests/simulation/LogWatch.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <utility>

namespace pellar {
namespace {

// "2023-11-14T22:13:20Z ".
bool beginsWithTime(std::string_view line) {
  constexpr std::string_view pattern = "0000-00-00T00:00:00Z ";
  if (line.size() < pattern.size()) return false;
  return std::ranges::equal(pattern, line.substr(0, pattern.size()), [](char wanted, char read) {
    return wanted == '0' ? std::isdigit(static_cast<unsigned char>(read)) != 0 : wanted == read;
  });
}

bool isNumber(std::string_view text) {
  return !text.empty() &&
         std::ranges::all_of(text, [](unsigned char digit) { return std::isdigit(digit) != 0; });
}

// Whether it begins so; takes that off then.
bool taken(std::string_view& message, std::string_view start) {
  if (!message.starts_with(start)) return false;
  message.remove_prefix(start.size());
  return true;
}

}  // namespace

bool LogWatch::mayBeWritten(std::string_view message) {
  if (message == "tracking started" || message.starts_with("save all: ") ||
      message.starts_with("autosave: ") || message.starts_with("applescript error: "))
    return true;
  if (taken(message, "AXObserverCreate failed for pid "))
    return isNumber(message) && refusing_.contains(std::stoi(std::string(message)));
  if (taken(message, "strip mouseDragged tab=")) return dragged_ && (message == "nil" || isNumber(message));
  if (message.starts_with("banner drag start: ") || message.starts_with("tabs reordered: [")) return dragged_;
  if (message.starts_with("rename failed for ")) ++failedRenames_;
  if (message.starts_with("rename failed for ") || message.starts_with("rename kept ")) return renames_;
  if (updates_.mayBeWritten(message)) return true;
  if (message.starts_with("state save failed: ")) {
    ++failedSaves_;
    return diskRefuses_;
  }
  return false;
}

std::optional<std::string> LogWatch::compare() {
  std::ifstream stream(file_);
  stream.seekg(read_);
  std::optional<std::string> wrong;
  for (std::string line; std::getline(stream, line);) {
    read_ += static_cast<std::streamoff>(line.size()) + 1;
    // What a script says of its failure may have several lines.
    if (std::exchange(inScriptError_, inScriptError_ && line != "}")) continue;
    inScriptError_ = line.ends_with(" applescript error: {");
    constexpr std::size_t timeLength = 21;
    if (!beginsWithTime(line) || !mayBeWritten(std::string_view(line).substr(timeLength))) wrong = line;
  }
  return wrong;
}

}  // namespace pellar
