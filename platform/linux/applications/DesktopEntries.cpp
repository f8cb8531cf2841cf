#include "platform/linux/applications/DesktopEntries.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

#include "core/Ascii.h"
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

std::optional<DesktopEntryText> readDesktopEntry(std::istream& text) {
  DesktopEntryText entry;
  bool inEntry = false;
  for (std::string whole; std::getline(text, whole);) {
    const std::string_view line = trimmed(whole);
    if (!line.empty() && line.front() == '[') {
      if (inEntry) break;
      inEntry = line == "[Desktop Entry]";
      continue;
    }
    const auto equals = line.find('=');
    if (!inEntry || equals == std::string_view::npos) continue;
    const std::string_view key = trimmed(line.substr(0, equals));
    const std::string_view value = trimmed(line.substr(equals + 1));
    if (key == "Name") entry.name = value;
    if (key == "Categories") entry.isTerminal = lists(value, "TerminalEmulator");
    if (key == "StartupWMClass") entry.startupClass = value;
    if (key == "Type" && value != "Application") return std::nullopt;
  }
  return inEntry ? std::optional(std::move(entry)) : std::nullopt;
}

std::optional<DesktopEntry> DesktopEntries::forWindowClass(std::string_view windowClass) {
  if (windowClass.empty()) return std::nullopt;
  if (!read_) read();
  const std::string key = Ascii::lowered(windowClass);
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
      // What is no file may keep its reader waiting for ever.
      std::error_code unknown;
      if (it->path().extension() == ".desktop" && it->is_regular_file(unknown)) files.push_back(it->path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) add(applications, file);
  }
}

void DesktopEntries::add(const fs::path& applications, const fs::path& file) {
  std::ifstream stream(file);
  const auto text = readDesktopEntry(stream);
  if (!text) return;
  DesktopEntry entry;
  entry.id = file.lexically_relative(applications).replace_extension().string();
  std::replace(entry.id.begin(), entry.id.end(), '/', '-');
  entry.name = text->name;
  entry.isTerminal = text->isTerminal;
  if (!text->startupClass.empty()) byStartupClass_.emplace(Ascii::lowered(text->startupClass), entry);
  byId_.emplace(Ascii::lowered(entry.id), entry);
  const auto dot = entry.id.rfind('.');
  if (dot != std::string::npos) byLastComponent_.emplace(Ascii::lowered(entry.id.substr(dot + 1)), entry);
}

}  // namespace pellar
