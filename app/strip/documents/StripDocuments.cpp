#include "app/strip/documents/StripDocuments.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "app/automation/FileMenu.h"
#include "app/strip/documents/Prompt.h"
#include "core/Log.h"
#include "core/PathExtension.h"
#include "core/TabLabel.h"
#include "core/Utf8.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto pathRecheckInterval = 30s;
// More look-ups are not kept beyond that time, since nobody tells which of their windows are gone.
constexpr std::size_t mostLookUpsKept = 1000;

// What applications call the File-menu item that makes a document, the usual name first.
constexpr std::array<std::string_view, 5> newDocumentTitles{"New", "New Document", "New File", "New Window",
                                                            "New Tab"};

bool isKnown(const std::optional<std::string>& path) {
  return path && !path->empty();
}

// The file name without its extension.
std::string stem(std::string_view path) {
  std::string_view name = lastComponent(path);
  if (const auto extension = pathExtension(path); !extension.empty())
    name.remove_suffix(extension.size() + 1);
  return std::string(name);
}

// The path of the document of a window's label, which is its name or what a tab would make of its name.
std::optional<std::string> pathOf(const std::string& label,
                                  const std::unordered_map<std::string, std::string>& pathsByName) {
  if (const auto exact = pathsByName.find(label); exact != pathsByName.end()) return exact->second;
  const auto same = std::ranges::find_if(pathsByName, [&](const auto& document) {
    return TabLabel::label(document.first, std::nullopt) == label;
  });
  return same == pathsByName.end() ? std::nullopt : std::optional(same->second);
}

// Whether a window's title still names that document.
bool shows(const OfficeWindow& window, const std::string& path) {
  return Utf8::areEquivalent(TabLabel::label(window.title, std::nullopt), TabLabel::label({}, path));
}

}  // namespace

StripDocuments::StripDocuments(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                               std::shared_ptr<StateStore> store,
                               std::shared_ptr<const TrackedPicture> picture,
                               std::shared_ptr<WindowActions> actions)
    : platform_(platform),
      tracker_(std::move(tracker)),
      store_(std::move(store)),
      picture_(std::move(picture)),
      actions_(std::move(actions)),
      automation_(platform.scripts) {}

// --- which files they are ---

void StripDocuments::resolvePathsIfNeeded(const TrackedApp& app, const WindowList& windows) {
  const auto uptime = platform_.mainLoop.uptime();
  WindowList pending;
  for (const auto& each : windows) {
    if (each->path) continue;
    const auto* checked = lastLookUp(*each);
    if (checked != nullptr && checked->path && shows(*each, *checked->path)) {
      each->path = checked->path;
    } else if (checked == nullptr || uptime - checked->uptime > pathRecheckInterval) {
      pending.push_back(each);
    }
  }
  if (!pending.empty()) {
    const bool tooMany = pathChecked_.size() > mostLookUpsKept;
    std::erase_if(pathChecked_, [&](const auto& entry) {
      const LookUp& lookUp = entry.second;
      return (tooMany || !lookUp.path) && uptime - lookUp.uptime > pathRecheckInterval;
    });
    // Before asking, which may take long and deliver the next picture meanwhile.
    for (const auto& each : pending)
      pathChecked_.insert_or_assign(each->id(), LookUp{each->element, uptime, std::nullopt});
    if (app.office) {
      const auto names = automation_.pathsByName(*app.office);
      for (const auto& each : pending)
        if (const auto found = pathOf(TabLabel::label(each->title, std::nullopt), names); isKnown(found))
          keepPath(*each, *found);
    }
  }
  recordRecent(app, windows);
}

std::optional<std::string> StripDocuments::path(const std::shared_ptr<OfficeWindow>& window) {
  const auto present = picture_->present(*window);
  const auto& record = present ? present : window;
  if (isKnown(record->path)) return record->path;
  auto found = automation_.path(*record);
  if (!isKnown(found)) return std::nullopt;
  keepPath(*window, *found);
  return found;
}

const StripDocuments::LookUp* StripDocuments::lastLookUp(const OfficeWindow& window) const {
  const auto found = pathChecked_.find(window.id());
  // A new window may come under the number of one that is gone.
  return found != pathChecked_.end() && found->second.window == window.element ? &found->second : nullptr;
}

void StripDocuments::keepPath(OfficeWindow& window, const std::string& path) {
  window.path = path;
  // The window may have been given a new record meanwhile, or be given one later.
  if (const auto present = picture_->present(window)) present->path = path;
  pathChecked_.insert_or_assign(window.id(), LookUp{window.element, platform_.mainLoop.uptime(), path});
}

// Each document is entered once a run, when it is first seen open.
void StripDocuments::recordRecent(const TrackedApp& app, const WindowList& windows) {
  std::vector<std::string> fresh;
  for (const auto& each : windows)
    if (each->path && recordedRecent_.insert(*each->path).second) fresh.push_back(*each->path);
  if (fresh.empty()) return;
  const double now = platform_.mainLoop.secondsSince1970();
  store_->update([&](AppState& state) {
    for (const auto& path : fresh) state.touchRecent(path, app.id, now);
  });
}

// --- what the strip does to them ---

void StripDocuments::rename(const std::shared_ptr<OfficeWindow>& window) {
  const auto reference = actions_->windows().remember(window);
  if (const auto known = path(window)) rename(reference, *known);
}

// By value: what it is called with may be replaced while the question is open.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void StripDocuments::rename(WindowReference window, std::string path) {
  if (!actions_->windows().find(window)) return;
  const std::string current = stem(path);
  const auto answer = Prompt::ask(platform_.alerts, platform_.workspace, "Rename file",
                                  "New name for " + current + ":", current);
  if (!answer || Utf8::areEquivalent(*answer, current)) return;
  // Without its window another document of the same name might be meant.
  const auto target = actions_->windows().find(window);
  const auto newPath = target ? automation_.rename(*target, path, *answer) : std::nullopt;
  if (!newPath) {
    Log::write("rename failed for " + path + " -> " + *answer);
    return;
  }
  keepPath(*target, *newPath);
  if (store_->state().tags.contains(path)) {
    store_->update([&](AppState& state) {
      auto entry = state.tags.extract(path);
      state.tags.insert_or_assign(*newPath, std::move(entry.mapped()));
    });
  }
  tracker_->refresh();
}

void StripDocuments::saveAll() {
  const auto shown = *picture_;
  if (!shown.app) return;
  if (shown.app->office) {
    saveAll(*shown.app->office);
  } else {
    Generic::saveAll(platform_.accessibility, shown.windows, shown.front);
  }
}

void StripDocuments::newDocument() {
  const auto shown = *picture_;
  if (!shown.app) return;
  if (shown.app->office) {
    newDocument(*shown.app->office);
  } else if (shown.front) {
    Generic::pressFileMenu(platform_.accessibility, shown.front->pid, newDocumentTitles);
  }
}

void StripDocuments::setTag(const WindowReference& window, const std::string& key,
                            std::optional<TagColor> color) {
  if (!actions_->windows().find(window)) return;
  store_->update([&](AppState& state) {
    if (color) {
      state.tags.insert_or_assign(key, std::string(rawValue(*color)));
    } else {
      state.tags.erase(key);
    }
  });
  tracker_->refresh();
}

// --- groups ---

void StripDocuments::saveGroup(const WindowList& windows) {
  std::vector<std::string> paths;
  for (const auto& each : WindowList(windows))
    if (auto known = path(each)) paths.push_back(std::move(*known));
  if (paths.empty()) return;
  const auto name = Prompt::ask(platform_.alerts, platform_.workspace, "Group name",
                                std::to_string(paths.size()) + " saved files will be in this group.", "");
  if (!name) return;
  store_->update([&](AppState& state) {
    auto& groups = state.groups;
    const auto same = std::ranges::find_if(
        groups, [&](const auto& group) { return Utf8::areEquivalent(group.first, *name); });
    groups.insert_or_assign(same == groups.end() ? *name : same->first, paths);
  });
}

void StripDocuments::openGroup(const std::string& name) {
  const auto& groups = store_->state().groups;
  const auto group = groups.find(name);
  if (group == groups.end()) return;
  for (const auto& path : std::vector<std::string>(group->second))
    if (isUsablePath(path)) platform_.workspace.open(path);
}

void StripDocuments::deleteGroup(const std::string& name) {
  store_->update([&](AppState& state) { state.groups.erase(name); });
}

}  // namespace pellar
