#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

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

  // The POSIX path of every open document that was ever saved, by the document's name. Empty for Outlook.
  [[nodiscard]] std::unordered_map<std::string, std::string> pathsByName(OfficeApp app);

  // The file behind a window: the record's own for an application that is not an Office one, else that of an
  // open document with the window's label. Absent when unknown.
  [[nodiscard]] std::optional<std::string> path(const OfficeWindow& window);

  // Saves the documents that have a file, with `onlyModified` just those with unsaved changes. How many were
  // saved; never one that would open a dialog.
  int saveAll(OfficeApp app, bool onlyModified);

  // Brings the application forward with a new, empty document; in Outlook a new message.
  void newDocument(OfficeApp app);

  // Saves the window's document under `newName` in the same folder, with the old extension where the name has
  // none, and removes the old file once the new one is whole on the disk; an old file that cannot be removed,
  // or beside which the new one is empty, stays. The new path; absent when nothing was renamed, and the old
  // file is then still there. Never overwrites a file.
  std::optional<std::string> rename(const OfficeWindow& window, const std::string& oldPath,
                                    const std::string& newName);

 private:
  ScriptRunner& runner_;
  FileOperations& files_;
};

}  // namespace pellar
