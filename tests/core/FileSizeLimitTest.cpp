#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/FileSizeLimit.h"
#include "core/StateStore.h"
#include "platform/sim/system/TemporaryFolder.h"

namespace pellar {
namespace {

// What became of `program` in a process of its own that may write files of 4096 bytes.
template <class Program>
int statusOfLimited(const Program& program) {
  const pid_t child = ::fork();
  if (child == 0) {
    const rlimit small{4096, 4096};
    if (::setrlimit(RLIMIT_FSIZE, &small) != 0) ::_exit(2);
    ::_exit(program());
  }
  int status = -1;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return status;
}

TEST(FileSizeLimit, TheProgramOutlivesASaveThatIsTooLarge) {
  const TemporaryFolder folder;
  const int status = statusOfLimited([&] {
    FileSizeLimit::makeAnError();
    StateStore store(folder / "state.json");
    store.update([](AppState& state) { state.tags[std::string(100'000, 'x')] = "red"; });
    return store.state().tags.size() == 1 ? 0 : 1;
  });
  EXPECT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(FileSizeLimit, AProgramThatIsStartedEndsAsItWouldAnywhere) {
  const int status = statusOfLimited([] {
    FileSizeLimit::makeAnError();
    return ::execl("/bin/sh", "sh", "-c", "kill -XFSZ $$", nullptr);
  });
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(WTERMSIG(status), SIGXFSZ);
}

}  // namespace
}  // namespace pellar
