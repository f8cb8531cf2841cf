#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>

#include "tests/support/BrokenFileOperations.h"

namespace pellar::test {

// What happens to the files of a program at one step of its work.
enum class Mishap {
  oneStepFails,      // the disk was full for a moment
  allFromThereFail,  // it stays full
  theProgramDies,    // without any goodbye, just before the step
};

inline constexpr Mishap everyMishap[]{Mishap::oneStepFails, Mishap::allFromThereFail, Mishap::theProgramDies};

// A word, as tests' names take.
inline std::string nameOf(Mishap mishap) {
  switch (mishap) {
    case Mishap::oneStepFails:
      return "OneStepFails";
    case Mishap::allFromThereFail:
      return "AllFailFromThere";
    case Mishap::theProgramDies:
      return "TheProgramDies";
  }
  return "";
}

inline void PrintTo(Mishap mishap, std::ostream* stream) {
  *stream << nameOf(mishap);
}

// A piece of work on files.
struct FileStory {
  std::function<void()> prepare;                    // what is on the disk before
  std::function<void(BrokenFileOperations&)> work;  // what meets the mishap
  std::function<void(const std::string& where)>
      check;  // what must be there afterwards; `where` says what happened
};

// Tells the story with the first step hit, with the second, and so on until the work has no such step. Gives
// how many steps were hit.
inline int tellWithEveryStepHit(Mishap mishap, const FileStory& story) {
  for (int hit = 0;; ++hit) {
    story.prepare();
    int steps = 0;
    BrokenFileOperations operations;
    operations.longestWrite = 100;
    operations.before = [&](std::string_view) -> std::error_code {
      const int step = steps++;
      if (step < hit || (step > hit && mishap == Mishap::oneStepFails)) return {};
      if (mishap == Mishap::theProgramDies) ::_exit(1);
      return std::make_error_code(std::errc::no_space_on_device);
    };
    bool wasHit = false;
    if (mishap == Mishap::theProgramDies) {
      const pid_t child = ::fork();
      if (child == 0) {
        story.work(operations);
        ::_exit(0);
      }
      int status = -1;
      EXPECT_EQ(::waitpid(child, &status, 0), child);
      EXPECT_TRUE(WIFEXITED(status));
      wasHit = WEXITSTATUS(status) == 1;
    } else {
      story.work(operations);
      wasHit = steps > hit;
    }
    story.check(nameOf(mishap) + ", step " + std::to_string(hit));
    if (!wasHit) return hit;
  }
}

}  // namespace pellar::test
