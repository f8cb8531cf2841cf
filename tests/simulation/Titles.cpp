#include "tests/simulation/Titles.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace pellar::titles {
namespace {

constexpr std::array<std::string_view, 16> officeExtensions{"doc",  "docx", "docm", "dot",  "dotx", "rtf",
                                                            "xls",  "xlsx", "xlsm", "xlsb", "csv",  "ppt",
                                                            "pptx", "pptm", "pot",  "potx"};
constexpr std::array<std::string_view, 13> additions{
    "Saved",     "Word",           "Excel",    "PowerPoint", "Outlook",       "Compatibility Mode",
    "Read-Only", "Protected View", "Repaired", "Shared",     "Last Modified", "AutoRecovered",
    "Autosaved"};
constexpr std::array<std::string_view, 4> dashes{"-", "\u2013", "\u2014", "\u2022"};

bool isSpace(char letter) {
  return std::isspace(static_cast<unsigned char>(letter)) != 0;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

bool isAddition(std::string_view text) {
  constexpr std::string_view savedTo = "Saved to ";
  return std::ranges::find(additions, text) != additions.end() || text.starts_with("Last Modified") ||
         (text.starts_with(savedTo) && text.size() > savedTo.size());
}

// Takes the addition at the end off, or the one in which everything from its dash on is contained.
bool takeOneOff(std::string& title) {
  const std::string_view text = trimmed(title);
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::string_view rest = text.substr(at);
    const bool bracketed = rest.starts_with("[") && rest.ends_with("]");
    const auto dash =
        std::ranges::find_if(dashes, [&](std::string_view each) { return rest.starts_with(each); });
    if (bracketed ? !isAddition(rest.substr(1, rest.size() - 2))
                  : dash == dashes.end() || !isAddition(trimmed(rest.substr(dash->size()))))
      continue;
    title = trimmed(text.substr(0, at));
    return true;
  }
  return false;
}

std::string withoutExtension(std::string_view name) {
  const auto dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return std::string(name);
  std::string extension(name.substr(dot + 1));
  std::ranges::transform(extension, extension.begin(),
                         [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  const bool office = std::ranges::find(officeExtensions, extension) != officeExtensions.end();
  return std::string(office ? name.substr(0, dot) : name);
}

}  // namespace

std::string plainName(std::string title) {
  while (takeOneOff(title)) {
  }
  return withoutExtension(trimmed(title));
}

std::string nameOfFile(std::string_view path) {
  return withoutExtension(path.substr(path.rfind('/') + 1));
}

std::optional<std::string> fileOf(const std::optional<std::string>& url) {
  constexpr std::string_view scheme = "file://";
  if (!url || !url->starts_with(scheme)) return std::nullopt;
  std::string file;
  for (std::size_t at = scheme.size(); at < url->size(); ++at) {
    constexpr int hexadecimal = 16;
    const bool escaped = (*url)[at] == '%';
    file += escaped ? static_cast<char>(std::stoi(url->substr(at + 1, 2), nullptr, hexadecimal)) : (*url)[at];
    if (escaped) at += 2;
  }
  return file;
}

std::string keyOf(const std::string& title, const std::optional<std::string>& file) {
  return file ? *file : "title:" + plainName(title);
}

}  // namespace pellar::titles
