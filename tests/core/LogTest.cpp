#include <fcntl.h>
#include <gtest/gtest.h>
#include <re2/re2.h>
#include <stdlib.h>  // setenv
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "core/FileSizeLimit.h"
#include "core/Log.h"
#include "tests/support/Files.h"
#include "tests/support/LogReader.h"

namespace pellar {
namespace {

namespace fs = std::filesystem;
using test::content;
using test::put;

class LogTest : public ::testing::Test {
 protected:
  LogTest() {
    Log::setClock([] { return std::int64_t{1741079727}; });
  }
  ~LogTest() override { Log::setClock({}); }

  LogReader log;
  fs::path file = log.path();
  fs::path folder = file.parent_path();
};

TEST_F(LogTest, TheFirstLineCreatesTheFile) {
  Log::write("started");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z started\n");
  EXPECT_EQ(test::mode(file), 0600U) << "paths are in it";
}

TEST_F(LogTest, LinesAreAppendedAndNothingIsLost) {
  put(file, "from an earlier run\n");
  Log::write("one");
  Log::write("two");
  EXPECT_EQ(content(file), "from an earlier run\n2025-03-04T09:15:27Z one\n2025-03-04T09:15:27Z two\n");
}

TEST_F(LogTest, AnEmptyMessageIsATimeStampAndASpace) {
  Log::write("");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z \n");
}

TEST_F(LogTest, OnlyTheFirstOfSeveralLinesHasATimeStamp) {
  Log::write("one\ntwo\n");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z one\ntwo\n\n");
}

TEST_F(LogTest, TheFileStaysUtf8) {
  using namespace std::string_view_literals;
  Log::write("Résumé \xFF\0 x"sv);
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z Résumé \uFFFD\0 x\n"sv);
}

TEST_F(LogTest, TimesAreInUtcWithFourDigitsForTheYear) {
  ::setenv("TZ", "UTC-5", 1);
  ::tzset();
  const std::vector<std::pair<std::int64_t, std::string>> expected{{0, "1970-01-01T00:00:00Z"},
                                                                   {-1, "1969-12-31T23:59:59Z"},
                                                                   {951782400, "2000-02-29T00:00:00Z"},
                                                                   {4102444799, "2099-12-31T23:59:59Z"},
                                                                   {-62135596800, "0001-01-01T00:00:00Z"},
                                                                   {INT64_MAX, "9999-12-31T23:59:59Z"},
                                                                   {INT64_MIN, "0000-01-01T00:00:00Z"}};
  std::string all;
  for (const auto& [seconds, stamp] : expected) {
    Log::setClock([time = seconds] { return time; });
    Log::write("x");
    all += stamp + " x\n";
  }
  ::unsetenv("TZ");
  ::tzset();
  EXPECT_EQ(content(file), all);
}

TEST_F(LogTest, WithoutAnInjectedClockTheSystemsIsUsed) {
  Log::setClock({});
  Log::write("x");
  EXPECT_TRUE(RE2::FullMatch(content(file), R"(20\d\d-\d\d-\d\dT\d\d:\d\d:\d\dZ x\n)")) << content(file);
}

TEST_F(LogTest, AClockMayLogItself) {
  Log::setClock([] {
    Log::setClock([] { return std::int64_t{0}; });
    Log::write("inner");
    return std::int64_t{1};
  });
  Log::write("outer");
  EXPECT_EQ(content(file), "1970-01-01T00:00:00Z inner\n1970-01-01T00:00:01Z outer\n");
}

TEST_F(LogTest, AClockThatThrowsDoesNotDisturbTheCaller) {
  Log::setClock([]() -> std::int64_t { throw std::runtime_error("no clock"); });
  Log::write("x");
  EXPECT_EQ(content(file), "");
}

TEST_F(LogTest, AnotherPlaceTakesAllLaterLines) {
  Log::write("here");
  Log::setUrl(folder / "other.log");
  EXPECT_EQ(Log::url(), folder / "other.log");
  Log::write("there");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z here\n");
  EXPECT_EQ(content(folder / "other.log"), "2025-03-04T09:15:27Z there\n");
}

TEST_F(LogTest, ADeletedFileIsCreatedAgain) {
  Log::write("one");
  fs::remove(file);
  Log::write("two");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z two\n");
}

TEST_F(LogTest, AMissingFolderIsNotCreated) {
  Log::setUrl(folder / "missing/Pellar.log");
  Log::write("x");
  EXPECT_FALSE(fs::exists(folder / "missing"));
}

TEST_F(LogTest, AFolderAPipeOrNothingInPlaceOfTheFileIsSilent) {
  fs::create_directory(file);
  Log::write("x");
  EXPECT_TRUE(fs::is_empty(file));
  Log::setUrl({});
  Log::write("x");
  const fs::path pipe = folder / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  Log::setUrl(pipe);
  Log::write("nobody reads this");
}

TEST_F(LogTest, OnAFullDiskNothingHappens) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
  Log::setUrl("/dev/full");
  Log::write("x");
  Log::setUrl(file);
  Log::write("y");
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z y\n");
}

TEST_F(LogTest, AFileThatMayNotGrowKeepsWhatItHas) {
  const std::string earlier(4096, 'e');
  put(file, earlier);
  FileSizeLimit::makeAnError();
  rlimit whole{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
  rlimit small = whole;
  small.rlim_cur = 4096;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  Log::write("x");
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
  EXPECT_EQ(content(file), earlier);
}

TEST_F(LogTest, ALineIsWrittenOnceWhateverAnEarlierCallFailedWith) {
  FileSizeLimit::makeAnError();
  rlimit whole{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &whole), 0);
  rlimit small = whole;
  small.rlim_cur = 4096;  // lines without end would end there
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  errno = EINTR;
  Log::write("x");
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &whole), 0);
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z x\n");
}

TEST_F(LogTest, ALineIsWrittenWhileStandardInputIsClosed) {
  const int input = ::dup(0);
  ::close(0);
  Log::write("x");
  ::dup2(input, 0);
  ::close(input);
  EXPECT_EQ(content(file), "2025-03-04T09:15:27Z x\n");
}

// Root may write to any file, so somebody else tries.
TEST_F(LogTest, AReadOnlyFileIsLeftAlone) {
  put(file, "precious\n");
  fs::permissions(file, fs::perms(0444));
  fs::permissions(folder, fs::perms(0777));
  const pid_t child = ::fork();
  if (child == 0) {
    if (::geteuid() == 0 && ::setuid(65534) != 0) ::_exit(2);
    Log::write("x");
    ::_exit(0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(content(file), "precious\n");
}

TEST_F(LogTest, LinesFromManyThreadsAreAllThereAndWhole) {
  constexpr int threadCount = 8;
  constexpr int lineCount = 200;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([thread] {
      for (int line = 0; line < lineCount; ++line) {
        Log::write(std::to_string(thread) + ":" + std::to_string(line) + std::string(500, '.'));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::set<std::string> lines;
  std::istringstream text(content(file));
  for (std::string line; std::getline(text, line);) {
    EXPECT_TRUE(line.starts_with("2025-03-04T09:15:27Z "));
    EXPECT_TRUE(line.ends_with(std::string(500, '.')));
    lines.insert(line);
  }
  EXPECT_EQ(lines.size(), static_cast<std::size_t>(threadCount * lineCount));
}

TEST_F(LogTest, NoDescriptorIsLeftOpen) {
  const auto lowestFree = [] {
    const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(descriptor);
    return descriptor;
  };
  const int before = lowestFree();
  for (int line = 0; line < 100; ++line) Log::write("x");
  EXPECT_EQ(lowestFree(), before);
}

// In a process of its own, since the place is worked out once.
TEST(LogPlace, IsInTheLogFolderOfTheHomeAtFirst) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        ::setenv("HOME", "/somewhere/ann", 1);
        ::_exit(Log::url() == "/somewhere/ann/Library/Logs/Pellar.log" ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace pellar
