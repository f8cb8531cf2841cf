#pragma once

#include <filesystem>
#include <istream>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pellar {

// What a desktop entry says of an application.
struct DesktopEntry {
  std::string id;    // the file's name below "applications", without ".desktop", folders joined by "-"
  std::string name;  // the entry's Name; empty when it has none
  bool isTerminal = false;
};

// What the text of one says; empty where it does not.
struct DesktopEntryText {
  std::string name;
  std::string startupClass;  // StartupWMClass
  bool isTerminal = false;
};

// Absent when the text is no application's entry.
[[nodiscard]] std::optional<DesktopEntryText> readDesktopEntry(std::istream& text);

// The installed desktop entries. Read on first use.
class DesktopEntries {
 public:
  // `dataFolders` each may hold a folder "applications"; an earlier one's entries win.
  explicit DesktopEntries(std::vector<std::filesystem::path> dataFolders)
      : dataFolders_(std::move(dataFolders)) {}

  // The entry of the application whose windows carry this class: by StartupWMClass, else by the entry's id or
  // that id's last component. Case does not matter.
  [[nodiscard]] std::optional<DesktopEntry> forWindowClass(std::string_view windowClass);

 private:
  void read();
  void add(const std::filesystem::path& applications, const std::filesystem::path& file);

  std::vector<std::filesystem::path> dataFolders_;
  bool read_ = false;
  std::map<std::string, DesktopEntry> byStartupClass_;
  std::map<std::string, DesktopEntry> byId_;
  std::map<std::string, DesktopEntry> byLastComponent_;
};

}  // namespace pellar
