#pragma once

#import <Foundation/Foundation.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/Accessibility.h"

namespace pellar::contract {

// The tests' own application (programs/MacProgram.mm) in a process of its own. Ends with its owner, if need
// be by force.
class ProgramProcess {
 public:
  // Starts it from a bundle of its own, whose identifier has the name in it. One that starts cold takes so
  // long before it answers anything, and is not waited for; any other one has started on return. Throws when
  // it does not start.
  explicit ProgramProcess(const std::string& name,
                          std::optional<std::chrono::seconds> coldStart = std::nullopt);
  ~ProgramProcess();
  ProgramProcess(const ProgramProcess&) = delete;
  ProgramProcess& operator=(const ProgramProcess&) = delete;

  [[nodiscard]] ProcessId pid() const { return task_.processIdentifier; }
  // Tells it a line, and waits for its answer: at most ten seconds, then throws.
  std::string tell(const std::string& line);
  // Tells it to quit, and does not wait.
  void quit();

 private:
  // Absent when it has ended; throws when it says nothing for so long.
  std::optional<std::string> nextLine(std::chrono::milliseconds deadline);
  bool endsWithin(std::chrono::milliseconds deadline);

  std::filesystem::path bundle_;  // of this process alone
  NSTask* task_ = [[NSTask alloc] init];
  NSPipe* input_ = [NSPipe pipe];   // of the process
  NSPipe* output_ = [NSPipe pipe];  // of the process
  std::string read_;
};

}  // namespace pellar::contract
