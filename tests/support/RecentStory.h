#pragma once

#include <algorithm>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "platform/sim/panel/SimListView.h"
#include "tests/support/StripStory.h"

namespace pellar {

// Files in a home folder that were used before, and the drop-down that lists them as a user sees it.
class RecentStory : public StripStory {
 protected:
  using Names = std::vector<std::string>;

  static constexpr double longAgo = 1'600'000'000;

  // A file that is really there, by its path below the home folder.
  std::string file(const std::string& name) {
    const auto path = mac.home() / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "text";
    return path.string();
  }
  // A file last used that many seconds after long ago, with the editor unless said otherwise.
  std::string used(const std::string& name, double seconds, const std::string& app = "org.example.editor") {
    const std::string path = file(name);
    record(path, seconds, app);
    return path;
  }
  void record(const std::string& path, double seconds, const std::string& app = "org.example.editor") {
    pellar.store().update([&](AppState& state) { state.touchRecent(path, app, longAgo + seconds); });
  }

  // The editor's window Plan is in front, and the drop-down open under its strip.
  void openDropdown() {
    open("Plan");
    start();
    strip().clickSearchField();
  }
  [[nodiscard]] bool isOpen() { return dropdown().isVisible(); }

  // The texts of the rows in sight, from top to bottom.
  [[nodiscard]] Names titles() { return texts(12.5); }
  [[nodiscard]] Names folders() { return texts(10.5); }
  // The title of the row that is highlighted.
  [[nodiscard]] std::optional<std::string> selected() {
    const auto& items = dropdown().drawing().items();
    const auto highlight = std::ranges::find_if(
        items, [](const auto& item) { return !item.isText() && item.rect.height == 34; });
    if (highlight == items.end()) return std::nullopt;
    const auto title = std::ranges::find_if(items, [&](const auto& item) {
      return item.isText() && item.font.size == 12.5 && highlight->rect.contains(item.rect.origin());
    });
    if (title == items.end()) return std::nullopt;
    return title->text;
  }
  [[nodiscard]] ScreenPoint pointOf(const std::string& title) {
    for (const auto& item : dropdown().drawing().items()) {
      if (item.isText() && item.text == title) return dropdown().host().toScreen(item.rect)->origin();
    }
    throw std::runtime_error("not listed: " + title);
  }
  [[nodiscard]] const std::vector<std::string>& opened() { return mac.workspace().opened(); }

 private:
  [[nodiscard]] Names texts(double size) {
    std::vector<DrawnItem> found;
    for (const auto& item : dropdown().drawing().items())
      if (item.isText() && item.font.size == size) found.push_back(item);
    std::ranges::sort(found, {}, [](const auto& item) { return item.rect.minY(); });
    Names names;
    for (const auto& item : found) names.push_back(item.text);
    return names;
  }
};

}  // namespace pellar
