#include "platform/linux/applications/DesktopEntries.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "platform/linux/x11/ConfigText.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using ConfigText::trimmed;

// Whether a list, with a semicolon after each, names it.
bool lists(std::string_view list, std::string_view wanted) {
  bool found = false;
  ConfigText::split(list, ';', [&](std::string_view part) { found = found || trimmed(part) == wanted; });
  return found;
}

}  // namespace

std::string asciiLowercased(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char each) {
    return each >= 'A' && each <= 'Z' ? static_cast<char>(each - 'A' + 'a') : each;
  });
  return result;
}

std::optional<DesktopEntry> DesktopEntries::forWindowClass(std::string_view windowClass) {
  if (windowClass.empty()) return std::nullopt;
  if (!read_) read();
  const std::string key = asciiLowercased(windowClass);
  for (const auto* index : {&byStartupClass_, &byId_, &byLastComponent_}) {
    const auto found = index->find(key);
    if (found != index->end()) return found->second;
  }
  return std::nullopt;
}

void DesktopEntries::read() {
  read_ = true;
  for (const fs::path& folder : dataFolders_) {
    const fs::path applications = folder / "applications";
    std::error_code error;
    std::vector<fs::path> files;
    fs::recursive_directory_iterator it(applications, fs::directory_options::skip_permission_denied, error);
    for (; !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
      if (it->path().extension() == ".desktop") files.push_back(it->path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) add(applications, file);
  }
}

void DesktopEntries::add(const fs::path& applications, const fs::path& file) {
  DesktopEntry entry;
  entry.id = file.lexically_relative(applications).replace_extension().string();
  std::replace(entry.id.begin(), entry.id.end(), '/', '-');
  std::string startupClass;
  std::ifstream stream(file);
  bool inEntry = false;
  for (std::string line; std::getline(stream, line);) {
    const std::string_view text = trimmed(line);
    if (!text.empty() && text.front() == '[') {
      if (inEntry) break;
      inEntry = text == "[Desktop Entry]";
      continue;
    }
    const auto equals = text.find('=');
    if (!inEntry || equals == std::string_view::npos) continue;
    const std::string_view key = trimmed(text.substr(0, equals));
    const std::string_view value = trimmed(text.substr(equals + 1));
    if (key == "Name") entry.name = value;
    if (key == "Categories") entry.isTerminal = lists(value, "TerminalEmulator");
    if (key == "StartupWMClass") startupClass = value;
    if (key == "Type" && value != "Application") return;
  }
  if (!inEntry) return;
  if (!startupClass.empty()) byStartupClass_.emplace(asciiLowercased(startupClass), entry);
  byId_.emplace(asciiLowercased(entry.id), entry);
  const auto dot = entry.id.rfind('.');
  if (dot != std::string::npos) byLastComponent_.emplace(asciiLowercased(entry.id.substr(dot + 1)), entry);
}

}  // namespace pellar
