#include "app/automation/Automation.h"

#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "app/automation/OfficeScripts.h"
#include "core/Log.h"
#include "core/PathParts.h"
#include "core/TrueWhile.h"
#include "platform/MainLoop.h"
#include "platform/Workspace.h"

namespace pellar {

namespace {

namespace fs = std::filesystem;

std::string nameWithExtension(const std::string& newName, const std::string& oldPath) {
  if (!pathExtension(newName).empty()) return newName;
  const auto extension = pathExtension(oldPath);
  return extension.empty() ? newName : newName + "." + std::string(extension);
}

// Whether there is nothing at all under this path. What cannot be looked at counts as something.
bool isFree(const std::string& path) {
  std::error_code ignored;  // the type says what is known
  return fs::status(path, ignored).type() == fs::file_type::not_found;
}

// In bytes. Absent for a folder, and where there is no file as far as this program can tell.
std::optional<std::uintmax_t> fileSize(const std::string& path) {
  std::error_code error;
  const auto size = fs::file_size(path, error);
  return error ? std::nullopt : std::optional(size);
}

void sayKept(const std::string& oldPath, OldFile decision) {
  Log::write("rename kept " + oldPath + ": " + std::string(reason(decision)));
}

}  // namespace

std::string Automation::quoted(std::string_view text) {
  return OfficeScripts::quoted(text);
}

void Automation::whenFree(std::function<void()> action) {
  if (!busy_) return action();
  waiting_.push_back(std::move(action));
}

void Automation::scheduleNext() {
  platform_.mainLoop.post([this, here = alive_.watch()] {
    if (here) runNext();
  });
}

// One a turn: it may begin a script, whose end schedules the next, or ask the user something.
void Automation::runNext() {
  if (busy_ || waiting_.empty()) return;
  const auto action = std::move(waiting_.front());
  waiting_.pop_front();
  scheduleNext();
  action();
}

bool Automation::isRunning(OfficeApp app) const {
  return platform_.workspace.isRunning(std::string(bundleID(app)));
}

std::optional<ScriptDescriptor> Automation::tell(OfficeApp app, const std::optional<std::string>& source) {
  return source && isRunning(app) ? run(*source) : std::nullopt;
}

std::optional<ScriptDescriptor> Automation::run(const std::string& source) {
  if (busy_) return std::nullopt;
  ScriptResult result;
  {
    const TrueWhile busy(busy_);
    result = platform_.scripts.run(source);
  }
  scheduleNext();
  if (!result.error) return std::move(result.descriptor);
  Log::write("applescript error: " + *result.error);
  return std::nullopt;
}

OpenDocuments Automation::openDocuments(OfficeApp app) {
  const auto result = tell(app, OfficeScripts::pathsByName(app));
  if (!result) return {};
  std::vector<OpenDocuments::Document> documents;
  for (const ScriptDescriptor& item : result->items()) {
    const auto text = item.stringValue();
    if (!text) continue;
    const auto tab = text->find('\t');
    if (tab == std::string::npos) continue;
    documents.push_back({text->substr(0, tab), text->substr(tab + 1)});
  }
  return OpenDocuments(std::move(documents));
}

int Automation::saveAll(OfficeApp app, bool onlyModified) {
  const auto result = tell(app, OfficeScripts::saveAll(app, onlyModified));
  const auto* saved = result ? std::get_if<std::int32_t>(&result->value) : nullptr;
  return saved != nullptr ? *saved : 0;
}

void Automation::newDocument(OfficeApp app) {
  tell(app, OfficeScripts::newDocument(app));
}

std::string Automation::renamedPath(const std::string& oldPath, const std::string& newName) {
  const std::string folder(withoutLastComponent(oldPath));
  return (folder == "/" ? folder : folder + "/") + nameWithExtension(newName, oldPath);
}

std::optional<std::string> Automation::rename(const OfficeWindow& window, const std::string& oldPath,
                                              const std::string& newName) {
  if (!window.app.office || !isUsablePath(oldPath) || !isUsablePath(newName)) return std::nullopt;
  // The texts passed in may be the window's own, which can change while a script runs.
  const OfficeApp app = *window.app.office;
  const std::string from = oldPath;  // NOLINT(performance-unnecessary-copy-initialization)
  if (withoutLastComponent(from).empty() || !isRunning(app)) return std::nullopt;
  const std::string to = renamedPath(from, newName);
  if (to == from || !isFree(to)) return std::nullopt;
  const auto script = OfficeScripts::saveAs(app, lastComponent(from), to);
  if (!script || openDocuments(app).contradict(window.title, from)) return std::nullopt;

  // Asking takes time, in which a file may have come there.
  if (!isFree(to)) return std::nullopt;
  const auto result = tell(app, script);
  if (!result || result->stringValue() != "ok") {
    // It may have saved all the same, or save later: giving a script up does not call it back.
    sayKept(from, OldFile::keptUnconfirmed);
    return std::nullopt;
  }
  const auto evidence = evidenceAfterSaving(app, from, to);
  if (!evidence) return std::nullopt;
  auto decision = decideOldFile(*evidence);
  if (decision == OldFile::removed && files_.remove(from)) decision = OldFile::keptIrremovable;
  if (decision != OldFile::removed) sayKept(from, decision);
  return to;
}

std::optional<OldFileEvidence> Automation::evidenceAfterSaving(OfficeApp app, const std::string& from,
                                                               const std::string& to) {
  const auto documents = openDocuments(app);
  // The application alone does not make its new file last: a power failure could take it after the old one is
  // gone. So it is flushed, and looked at last of all. The name typed may lead to another folder.
  const bool lasts = !files_.flushFile(to) && !files_.flushFolder(withoutLastComponent(to));
  const auto size = fileSize(to);
  if (!size) return std::nullopt;
  return OldFileEvidence{.answered = !documents.all().empty(),
                         .stillOpen = documents.mayHold(from),
                         .newIsEmpty = *size == 0,
                         .newLasts = lasts,
                         .isNewToo = isSameFile(from, to)};
}

}  // namespace pellar
