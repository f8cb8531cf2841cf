#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "app/automation/OldFileDecision.h"
#include "app/automation/OpenDocuments.h"
#include "app/tracking/OfficeWindow.h"
#include "core/Alive.h"
#include "core/FileOperations.h"
#include "core/OfficeApp.h"
#include "platform/Platform.h"
#include "platform/ScriptRunner.h"

namespace pellar {

// What only scripts can do to the Office applications. Every call blocks until the application answered, and
// the main loop may run nested meanwhile: windows passed in are kept alive by the caller, and so is this.
// Nothing is asked of an application that is not running, which a script would start. A script that fails
// leaves one line in the log and counts as nothing done; one script is under way at a time, and another that
// is wanted meanwhile is not run (whenFree). Main thread only.
class Automation {
 public:
  // What `platform` refers to, and `files`, outlive this.
  explicit Automation(const Platform& platform, FileOperations& files = systemFileOperations())
      : platform_(platform), files_(files) {}
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;

  // Whether a script is under way.
  [[nodiscard]] bool isBusy() const { return busy_; }
  // Calls `action` now, or once the script that is under way and those that wait before have ended; never
  // when this is gone by then.
  void whenFree(std::function<void()> action);

  // The text as a string literal of the script language, quotes included.
  [[nodiscard]] static std::string quoted(std::string_view text);

  // Runs a script; absent when it failed (logged), cannot be run here at all, or another one is under way.
  std::optional<ScriptDescriptor> run(const std::string& source);

  // The open documents that were ever saved; none for Outlook.
  [[nodiscard]] OpenDocuments openDocuments(OfficeApp app);
  // The POSIX path of each, by the document's name.
  [[nodiscard]] std::unordered_map<std::string, std::string> pathsByName(OfficeApp app) {
    return openDocuments(app).pathsByName();
  }

  // Saves the documents that have a file, with `onlyModified` just those with unsaved changes. How many were
  // saved; never one that would open a dialog.
  int saveAll(OfficeApp app, bool onlyModified);

  // Brings the application forward with a new, empty document; in Outlook a new message.
  void newDocument(OfficeApp app);

  // The path under which rename() saves.
  [[nodiscard]] static std::string renamedPath(const std::string& oldPath, const std::string& newName);
  // Saves the window's document under `newName` in the same folder, with the old extension where the name has
  // none, and removes the old file where that loses nothing (OldFileDecision). The new path; absent when
  // nothing was renamed, and the old file is then still there. Never overwrites a file, and does nothing when
  // the application's answer leaves open which document is the window's.
  std::optional<std::string> rename(const OfficeWindow& window, const std::string& oldPath,
                                    const std::string& newName);

 private:
  // run() for a script of this application, if it has one and is running; else absent.
  std::optional<ScriptDescriptor> tell(OfficeApp app, const std::optional<std::string>& source);
  [[nodiscard]] bool isRunning(OfficeApp app) const;
  void runNext();
  void scheduleNext();
  // Absent when the new file is not there.
  [[nodiscard]] std::optional<OldFileEvidence> evidenceAfterSaving(OfficeApp app, const std::string& from,
                                                                   const std::string& to);

  Platform platform_;
  FileOperations& files_;
  bool busy_ = false;
  std::deque<std::function<void()>> waiting_;
  Alive alive_;
};

}  // namespace pellar
