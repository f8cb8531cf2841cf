// A plain X program for the tests: e2e_windows CLASS. It opens and changes windows as its standard input
// says, one command a line, and answers each with one line. It ends with its input.

#include <poll.h>
#include <unistd.h>

#include <iostream>
#include <string>

#include "tests/e2e/windows/PlainWindows.h"

int main(int argc, char** argv) {
  pellar::e2e::PlainWindows windows(argc > 1 ? argv[1] : "editor");
  std::string pending;
  for (;;) {
    if (!windows.answerEvents()) return 1;
    pollfd entries[2] = {{STDIN_FILENO, POLLIN, 0}, {windows.descriptor(), POLLIN, 0}};
    if (poll(entries, 2, -1) < 0) continue;
    if ((entries[0].revents & (POLLIN | POLLHUP)) == 0) continue;
    char buffer[4096];
    const auto count = read(STDIN_FILENO, buffer, sizeof buffer);
    if (count <= 0) return 0;
    pending.append(buffer, static_cast<std::size_t>(count));
    for (auto end = pending.find('\n'); end != std::string::npos; end = pending.find('\n')) {
      std::cout << windows.run(pending.substr(0, end)) << std::endl;
      pending.erase(0, end + 1);
    }
  }
}
