#pragma once

#include <sys/types.h>

#include <csignal>

namespace pellar::e2e {

// A process that answers no more (SIGSTOP), for as long as this lives. For one that has nothing to do with
// the X server; see stop() for others.
class Hanging {
 public:
  explicit Hanging(pid_t process) : process_(process) { kill(process_, SIGSTOP); }
  ~Hanging() { kill(process_, SIGCONT); }
  Hanging(const Hanging&) = delete;
  Hanging& operator=(const Hanging&) = delete;

 private:
  pid_t process_;
};

}  // namespace pellar::e2e
