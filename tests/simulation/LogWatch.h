#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "platform/Workspace.h"
#include "tests/simulation/UpdateWatch.h"

namespace pellar {

// Reads the log as far as it has not been read, and knows which lines the program may write, and after what.
class LogWatch {
 public:
  LogWatch(std::filesystem::path file, const UpdateWatch& updates)
      : file_(std::move(file)), updates_(updates) {}

  // The application refuses observers, or does not answer, for a while at least.
  void mayRefuse(ProcessId pid) { refusing_.insert(pid); }
  void userDragged() { dragged_ = true; }
  // The program has come to rest: a line about a drag would come too late.
  void dragsAreOver() { dragged_ = false; }
  void userRenames() { renames_ = true; }
  // Saves fail from now on, or succeed again.
  void disk(bool refuses) { diskRefuses_ = refuses; }
  // Lines of failed saves that were read so far.
  [[nodiscard]] std::size_t failedSaves() const { return failedSaves_; }

  // Likewise of renames that failed.
  [[nodiscard]] std::size_t failedRenames() const { return failedRenames_; }

  // The first line since the last time that the program may not write.
  [[nodiscard]] std::optional<std::string> compare();

 private:
  [[nodiscard]] bool mayBeWritten(std::string_view message);

  std::filesystem::path file_;
  const UpdateWatch& updates_;
  std::streamoff read_ = 0;
  std::set<ProcessId> refusing_;
  bool dragged_ = false;  // since the last rest
  bool renames_ = false;
  bool diskRefuses_ = false;
  std::size_t failedSaves_ = 0;
  std::size_t failedRenames_ = 0;
  bool inScriptError_ = false;
};

}  // namespace pellar
