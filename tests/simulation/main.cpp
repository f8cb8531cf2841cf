#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/simulation/RandomDays.h"

namespace pellar {

RandomDays& randomDays() {
  static RandomDays days;
  return days;
}

}  // namespace pellar

namespace {

// The program flushes what it saves, which a disk takes long for and memory does not.
void keepFilesInMemory() {
  constexpr const char* memory = "/dev/shm";
  if (::access(memory, W_OK) == 0) ::setenv("TMPDIR", memory, /*overwrite=*/0);
}

// A day on which the program dies names itself, too.
extern "C" void nameTheDay(int signal) {
  char text[] = "simulation_tests: died on day 0000000000\n";
  unsigned day = pellar::randomDays().current;
  for (char* digit = text + sizeof text - 3; day > 0; day /= 10) *digit-- = static_cast<char>('0' + day % 10);
  if (::write(STDERR_FILENO, text, sizeof text - 1) < 0) ::_exit(signal);
  ::signal(signal, SIG_DFL);
  ::raise(signal);
}

}  // namespace

int main(int argc, char** argv) {
  keepFilesInMemory();
  for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGILL}) ::signal(signal, nameTheDay);
  testing::InitGoogleTest(&argc, argv);
  for (int i = 1; i < argc; ++i) {
    auto& days = pellar::randomDays();
    if (std::sscanf(argv[i], "--days=%u-%u", &days.first, &days.last) == 2) continue;
    std::fprintf(stderr, "%s: --days=FIRST-LAST expected\n", argv[i]);
    return 2;
  }
  return RUN_ALL_TESTS();
}
