#include "tests/e2e/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <sstream>

#include "tests/support/Files.h"

namespace pellar::e2e {

namespace {

using Clock = std::chrono::steady_clock;

int millisecondsUntil(Clock::time_point end) {
  const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
  return left > 0 ? static_cast<int>(left) : 0;
}

bool readable(int descriptor, Clock::time_point end) {
  pollfd entry{descriptor, POLLIN, 0};
  int result = 0;
  do {
    result = poll(&entry, 1, millisecondsUntil(end));
  } while (result < 0 && errno == EINTR);
  return result > 0;
}

Ending endingOf(int status) {
  if (WIFEXITED(status)) return {WEXITSTATUS(status), std::nullopt};
  return {std::nullopt, WTERMSIG(status)};
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<pid_t> childIds() {
  std::istringstream text(test::content("/proc/self/task/" + std::to_string(getpid()) + "/children"));
  return {std::istream_iterator<pid_t>(text), std::istream_iterator<pid_t>()};
}

}  // namespace

Process::Process(const std::vector<std::string>& command, const Environment& environment,
                 const std::filesystem::path& errorFile, const Inherited& inherited)
    : name_(command.front()), errorFile_(errorFile) {
  int toChild[2];
  int fromChild[2];
  if (pipe2(toChild, O_CLOEXEC) != 0 || pipe2(fromChild, O_CLOEXEC) != 0) throw std::runtime_error("pipe");
  const int errors = open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  if (errors < 0) throw std::runtime_error("cannot write " + errorFile.string());

  // Everything is prepared before the fork: afterwards only calls that are safe there are made.
  std::vector<std::string> arguments = command;
  std::vector<std::string> variables;
  for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
  const auto argumentPointers = pointersTo(arguments);
  const auto variablePointers = pointersTo(variables);
  const pid_t parent = getpid();

  pid_ = fork();
  if (pid_ < 0) throw std::runtime_error("fork");
  if (pid_ == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(126);
    setpgid(0, 0);
    dup2(toChild[0], STDIN_FILENO);
    dup2(fromChild[1], STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    for (const auto& [number, descriptor] : inherited) {
      if (number == descriptor) {
        fcntl(number, F_SETFD, 0);
      } else {
        dup2(descriptor, number);
      }
    }
    execvpe(argumentPointers[0], argumentPointers.data(), variablePointers.data());
    _exit(127);
  }
  close(toChild[0]);
  close(fromChild[1]);
  close(errors);
  input_ = toChild[1];
  output_ = fromChild[0];
  pidDescriptor_ = static_cast<int>(syscall(SYS_pidfd_open, pid_, 0));
  if (pidDescriptor_ < 0) throw std::runtime_error("pidfd_open");
}

Process::~Process() {
  if (!ending_) {
    kill(pid_, SIGKILL);
    kill(pid_, SIGCONT);
    waitForEnd();
  }
  close(pidDescriptor_);
  close(input_);
  close(output_);
}

void Process::signal(int number) const {
  if (!ending_) kill(pid_, number);
}

void Process::write(const std::string& line) const {
  const std::string text = line + "\n";
  std::size_t written = 0;
  while (written < text.size()) {
    const auto count = ::write(input_, text.data() + written, text.size() - written);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw std::runtime_error(name_ + " takes no more input");
    written += static_cast<std::size_t>(count);
  }
}

std::string Process::readLine(std::chrono::milliseconds deadline) {
  const auto end = Clock::now() + deadline;
  for (;;) {
    if (const auto lineEnd = pending_.find('\n'); lineEnd != std::string::npos) {
      std::string line = pending_.substr(0, lineEnd);
      pending_.erase(0, lineEnd + 1);
      return line;
    }
    if (!readable(output_, end)) throw DeadlineMissed(name_ + " said nothing; errors: " + errors());
    char buffer[4096];
    const auto count = read(output_, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) throw std::runtime_error(name_ + " closed its output; errors: " + errors());
    pending_.append(buffer, static_cast<std::size_t>(count));
  }
}

std::optional<Ending> Process::waitForEnd(std::chrono::milliseconds deadline) {
  if (ending_) return ending_;
  if (!readable(pidDescriptor_, Clock::now() + deadline)) return std::nullopt;
  int status = 0;
  while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
  }
  ending_ = endingOf(status);
  return ending_;
}

Ending Process::end(std::chrono::milliseconds deadline) {
  signal(SIGTERM);
  signal(SIGCONT);
  if (const auto ending = waitForEnd(deadline)) return *ending;
  signal(SIGKILL);
  return waitForEnd().value_or(Ending{});
}

std::string Process::errors() const {
  return test::content(errorFile_);
}

long Process::voluntarySwitches() const {
  long sum = 0;
  for (const auto& thread : std::filesystem::directory_iterator("/proc/" + std::to_string(pid_) + "/task")) {
    std::ifstream status(thread.path() / "status");
    std::string line;
    const std::string key = "voluntary_ctxt_switches:";
    while (std::getline(status, line)) {
      if (line.starts_with(key)) sum += std::stol(line.substr(key.size()));
    }
  }
  return sum;
}

void adoptOrphans() {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
}

std::vector<std::string> childrenLeft(std::chrono::milliseconds deadline) {
  const auto end = Clock::now() + deadline;
  // Children of a child come to us when it ends, so the list is looked at until it is empty.
  for (auto ids = childIds(); !ids.empty() && Clock::now() < end; ids = childIds()) {
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, ids.front(), 0));
    if (descriptor < 0) break;
    if (readable(descriptor, end)) waitpid(ids.front(), nullptr, 0);
    close(descriptor);
  }
  std::vector<std::string> names;
  for (const pid_t id : childIds()) {
    std::string command = test::content("/proc/" + std::to_string(id) + "/cmdline");
    for (char& character : command) {
      if (character == '\0') character = ' ';
    }
    names.push_back(command);
  }
  return names;
}

void killChildrenLeft() {
  for (const pid_t id : childIds()) {
    kill(id, SIGKILL);
    waitpid(id, nullptr, 0);
  }
}

}  // namespace pellar::e2e
