#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "app/automation/OldFileDecision.h"
#include "app/automation/OpenDocuments.h"
#include "app/tracking/OfficeWindow.h"
#include "core/FileOperations.h"
#include "core/OfficeApp.h"
#include "platform/ScriptRunner.h"

namespace pellar {

// What only scripts can do to the Office applications. Every call blocks until the application answered, and
// the main loop may run nested meanwhile: windows passed in are kept alive by the caller. A script that fails
// leaves one line in the log and counts as nothing done. Main thread only.
class Automation {
 public:
  // Both outlive this.
  explicit Automation(ScriptRunner& runner, FileOperations& files = systemFileOperations())
      : runner_(runner), files_(files) {}

  // The text as a string literal of the script language, quotes included.
  [[nodiscard]] static std::string quoted(std::string_view text);

  // Runs a script; absent when it failed (logged) or cannot be run here at all.
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

  // Saves the window's document under `newName` in the same folder, with the old extension where the name has
  // none, and removes the old file where that loses nothing (OldFileDecision). The new path; absent when
  // nothing was renamed, and the old file is then still there. Never overwrites a file, and does nothing when
  // the application's answer leaves open which document is the window's.
  std::optional<std::string> rename(const OfficeWindow& window, const std::string& oldPath,
                                    const std::string& newName);

 private:
  [[nodiscard]] OldFileEvidence evidenceAfterSaving(OfficeApp app, const std::string& from,
                                                    const std::string& to);

  ScriptRunner& runner_;
  FileOperations& files_;
};

}  // namespace pellar
