#include "tests/e2e/tour/Interruption.h"

#include <signal.h>

#include <initializer_list>

namespace pellar::e2e {

namespace {

volatile sig_atomic_t requested = 0;

void note(int /*signal*/) {
  requested = 1;
}

}  // namespace

void noteInterruptions() {
  struct sigaction action {};
  action.sa_handler = note;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) sigaction(signal, &action, nullptr);
}

bool interrupted() {
  return requested != 0;
}

}  // namespace pellar::e2e
