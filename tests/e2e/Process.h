#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/Waiting.h"

namespace pellar::e2e {

// Environment variables of a program; only these are handed over.
using Environment = std::map<std::string, std::string>;

// How a program ended.
struct Ending {
  std::optional<int> exitCode;  // absent when a signal ended it
  std::optional<int> signal;
};

// A running child program with its standard input on a pipe, standard output on a pipe and standard error in
// a file. It is killed when this object goes, and when the test itself dies.
class Process {
 public:
  // Descriptors that the child inherits beside the three standard ones, by their number in the child.
  using Inherited = std::map<int, int>;

  Process(const std::vector<std::string>& command, const Environment& environment,
          const std::filesystem::path& errorFile, const Inherited& inherited = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] pid_t pid() const { return pid_; }
  void signal(int number) const;
  void write(const std::string& line) const;
  // The next line of its standard output, without the line break. Throws DeadlineMissed.
  [[nodiscard]] std::string readLine(std::chrono::milliseconds deadline = patience);

  // Waits for the end; absent when the deadline passes first. Safe to call again afterwards.
  std::optional<Ending> waitForEnd(std::chrono::milliseconds deadline = patience);
  // Asks it to end (SIGTERM) and waits; kills it when it does not.
  Ending end(std::chrono::milliseconds deadline = patience);

  // What it wrote to standard error so far.
  [[nodiscard]] std::string errors() const;
  // Voluntary context switches of all its threads since they started.
  [[nodiscard]] long voluntarySwitches() const;

 private:
  pid_t pid_ = -1;
  int pidDescriptor_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string pending_;
  std::string name_;
  std::filesystem::path errorFile_;
  std::optional<Ending> ending_;
};

// Makes this process adopt what its children leave behind, so that nothing escapes unseen. Once a program.
void adoptOrphans();
// Command lines of the children that do not end by themselves within the deadline.
[[nodiscard]] std::vector<std::string> childrenLeft(std::chrono::milliseconds deadline = patience);
// Kills children that are still there and waits for them.
void killChildrenLeft();

}  // namespace pellar::e2e
