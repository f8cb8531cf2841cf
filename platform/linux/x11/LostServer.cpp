#include "platform/linux/x11/LostServer.h"

#include <X11/Xlib.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace pellar::LostServer {

void endProcess() {
  // Several parts of the process notice, on more than one thread; the first one speaks for all.
  static std::atomic_flag said;
  if (said.test_and_set()) {
    for (;;) pause();
  }
  std::fputs("Pellar ends because the connection to the X server was lost.\n", stderr);
  std::_Exit(1);
}

void watchXlib() {
  XSetIOErrorHandler([](Display*) -> int { endProcess(); });
}

}  // namespace pellar::LostServer
