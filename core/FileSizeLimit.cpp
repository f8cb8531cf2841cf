#include "core/FileSizeLimit.h"

#include <signal.h>

namespace pellar::FileSizeLimit {
namespace {

void doNothing(int) {}

}  // namespace

void makeAnError() {
  // Handled, not ignored: what is ignored stays ignored in the programs that a process starts.
  struct sigaction action {};
  action.sa_handler = doNothing;
  ::sigaction(SIGXFSZ, &action, nullptr);
}

}  // namespace pellar::FileSizeLimit
