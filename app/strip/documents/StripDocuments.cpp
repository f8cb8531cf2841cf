#include "app/strip/documents/StripDocuments.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "app/automation/FileMenu.h"
#include "app/strip/documents/Prompt.h"
#include "core/Log.h"
#include "core/PathParts.h"
#include "core/Utf8.h"
#include "core/Weakly.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

// What applications call the File-menu item that makes a document, the usual name first.
constexpr std::array<std::string_view, 5> newDocumentTitles{"New", "New Document", "New File", "New Window",
                                                            "New Tab"};

// More are not waited for at once.
constexpr std::size_t mostOpenRenames = 20;

// The file name without its extension.
std::string stem(std::string_view path) {
  std::string_view name = lastComponent(path);
  if (const auto extension = pathExtension(path); !extension.empty())
    name.remove_suffix(extension.size() + 1);
  return Utf8::repaired(name);
}

}  // namespace

StripDocuments::StripDocuments(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                               std::shared_ptr<StateStore> store, std::shared_ptr<DocumentPaths> paths,
                               std::shared_ptr<Automation> automation, std::shared_ptr<PlaceInFront> place,
                               std::shared_ptr<const TrackedPicture> picture,
                               std::shared_ptr<WindowActions> actions)
    : platform_(platform),
      tracker_(std::move(tracker)),
      store_(std::move(store)),
      paths_(std::move(paths)),
      place_(std::move(place)),
      picture_(std::move(picture)),
      actions_(std::move(actions)),
      automation_(std::move(automation)) {}

void StripDocuments::resolvePathsIfNeeded(const TrackedApp& app, const WindowList& windows) {
  for (const auto& each : windows) paths_->adopt(each);
  paths_->askForUnknown(app, windows);
  closeRenames(windows);
}

// A script that was given up goes on in its application, so that a rename may end long after it failed here.
void StripDocuments::closeRenames(const WindowList& windows) {
  std::vector<OpenRename> confirmed;
  std::erase_if(openRenames_, [&](const OpenRename& open) {
    const auto window = std::ranges::find(windows, open.window, &OfficeWindow::element);
    if (window == windows.end() || !paths_->isSure(**window)) return false;
    const std::string now = paths_->of(**window)->path;
    if (now == open.to) confirmed.push_back(open);
    return now != open.from;
  });
  for (const auto& each : confirmed) moveTag(each.from, each.to);
}

void StripDocuments::moveTag(const std::string& from, const std::string& to) {
  if (!store_->state().tags.contains(from)) return;
  store_->update([&](AppState& state) {
    auto entry = state.tags.extract(from);
    state.tags.insert_or_assign(to, std::move(entry.mapped()));
  });
}

template <class Action>
void StripDocuments::whenFree(Action action) {
  automation_->whenFree(weakly(weak_from_this(), std::move(action)));
}

// Each document is entered once a run, when it is first seen open.
void StripDocuments::enterRecentFiles(const TrackedApp& app, const WindowList& windows) {
  std::vector<std::string> fresh;
  for (const auto& each : windows)
    if (const auto known = paths_->of(*each); known && recordedRecent_.insert(known->path).second)
      fresh.push_back(known->path);
  if (fresh.empty()) return;
  const double now = platform_.mainLoop.secondsSince1970();
  store_->update([&](AppState& state) {
    for (const auto& path : fresh) state.touchRecent(path, app.id, now);
  });
}

// --- what the strip does to them ---

void StripDocuments::rename(const WindowReference& window) {
  if (paths_->isSure(window.record())) return rename(window, paths_->of(window.record())->path);
  whenFree([window](StripDocuments& self) {
    const auto target = self.actions_->windows().find(window);
    const auto known = target ? self.paths_->ask(target) : std::nullopt;
    if (known) self.rename(window, known->path);
  });
}

// By value: what it is called with may be replaced while the question is open.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void StripDocuments::rename(WindowReference window, std::string path) {
  if (!actions_->windows().find(window)) return;
  const std::string current = stem(path);
  const auto answer =
      Prompt::ask(platform_.alerts, *place_, "Rename file", "New name for " + current + ":", current);
  if (!answer || Utf8::areEquivalent(*answer, Utf8::trimmed(current))) return;
  whenFree([window, path, name = *answer](StripDocuments& self) { self.finishRename(window, path, name); });
}

void StripDocuments::finishRename(const WindowReference& window, const std::string& path,
                                  const std::string& newName) {
  // Without its window another document of the same name might be meant.
  const auto target = actions_->windows().find(window);
  const auto newPath = target ? automation_->rename(*target, path, newName) : std::nullopt;
  if (!newPath) {
    Log::write("rename failed for " + path + " -> " + newName);
    if (!target) return;
    openRenames_.push_back({target->element, path, Automation::renamedPath(path, newName)});
    if (openRenames_.size() > mostOpenRenames) openRenames_.erase(openRenames_.begin());
    // The document may have another file by now.
    paths_->askAgain(target);
    return;
  }
  paths_->renamed(target, *newPath);
  moveTag(path, *newPath);
  actions_->lookAgain();
}

void StripDocuments::saveAll(OfficeApp app) {
  whenFree([app](StripDocuments& self) { self.automation_->saveAll(app, /*onlyModified=*/false); });
}

void StripDocuments::newDocument(OfficeApp app) {
  whenFree([app](StripDocuments& self) { self.automation_->newDocument(app); });
}

void StripDocuments::saveAll() {
  const auto shown = *picture_;
  if (!shown.app) return;
  if (shown.app->office) {
    saveAll(*shown.app->office);
  } else {
    FileMenu::saveAll(platform_.accessibility, shown.windows, shown.front);
  }
}

void StripDocuments::newDocument() {
  const auto shown = *picture_;
  if (!shown.app) return;
  if (shown.app->office) {
    newDocument(*shown.app->office);
  } else if (shown.front) {
    FileMenu::pressFileMenu(platform_.accessibility, shown.front->pid, newDocumentTitles);
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
  const bool mustAsk = std::ranges::any_of(
      windows, [&](const auto& each) { return each->app.office && !paths_->isSure(*each); });
  if (!mustAsk) return askGroupName(windows);
  whenFree([windows](StripDocuments& self) { self.askGroupName(windows); });
}

void StripDocuments::askGroupName(const WindowList& windows) {
  std::vector<std::string> paths;
  for (const auto& each : WindowList(windows))
    if (auto known = paths_->ask(each)) paths.push_back(std::move(known->path));
  if (paths.empty()) return;
  const auto name = Prompt::ask(platform_.alerts, *place_, "Group name",
                                std::to_string(paths.size()) + " saved files will be in this group.", "");
  if (!name) return;
  store_->update([&](AppState& state) { state.groups.insert_or_assign(*name, paths); });
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
