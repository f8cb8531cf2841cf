#include "tests/platform/mac/ProgramProcess.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <stdexcept>
#include <system_error>

#include "platform/mac/system/Conversions.h"

namespace pellar::contract {
namespace {

using std::chrono::milliseconds;

// A bundle for a program of this name: the system knows applications by their identifiers.
std::filesystem::path makeBundle(const std::string& name) {
  static int made = 0;
  const auto bundle = std::filesystem::path(fromNSString(NSTemporaryDirectory())) /
                      ("pellar-" + std::to_string(getpid()) + "-" + std::to_string(++made) + ".app");
  std::filesystem::create_directories(bundle / "Contents/MacOS");
  std::filesystem::copy_file(PELLAR_MAC_PROGRAM, bundle / "Contents/MacOS" / name);
  NSDictionary<NSString*, id>* info = @{
    @"CFBundleExecutable" : toNSString(name),
    @"CFBundleIdentifier" : toNSString("app.pellar.tests." + name),
    @"CFBundleName" : toNSString(name),
    @"CFBundlePackageType" : @"APPL",
    @"NSHighResolutionCapable" : @YES,
    @"NSPrincipalClass" : @"NSApplication"
  };
  NSURL* place = [NSURL fileURLWithPath:toNSString((bundle / "Contents/Info.plist").native())];
  if (![info writeToURL:place error:nil]) throw std::runtime_error("no bundle for " + name);
  return bundle;
}

}  // namespace

ProgramProcess::ProgramProcess(const std::string& name, std::optional<std::chrono::seconds> coldStart)
    : bundle_(makeBundle(name)) {
  // That one has ended is seen by what it says no more.
  signal(SIGPIPE, SIG_IGN);
  task_.executableURL = [NSURL fileURLWithPath:toNSString((bundle_ / "Contents/MacOS" / name).native())];
  if (coldStart) task_.arguments = @[ @"--cold", toNSString(std::to_string(coldStart->count())) ];
  task_.standardInput = input_;
  task_.standardOutput = output_;
  if (![task_ launchAndReturnError:nil]) throw std::runtime_error("cannot start " + name);
  // NSTask has closed the other ends of both pipes here.
  if (!coldStart && nextLine(std::chrono::seconds(30)) != "ready")
    throw std::runtime_error(name + " does not start");
}

ProgramProcess::~ProgramProcess() {
  quit();
  if (!endsWithin(std::chrono::seconds(3))) kill(pid(), SIGKILL);
  std::error_code ignored;  // what is left is in the folder for what is temporary
  std::filesystem::remove_all(bundle_, ignored);
}

std::string ProgramProcess::tell(const std::string& line) {
  const std::string told = line + "\n";
  if (write(input_.fileHandleForWriting.fileDescriptor, told.data(), told.size()) < 0)
    throw std::runtime_error("cannot be told: " + line);
  auto answer = nextLine(std::chrono::seconds(10));
  // Of one that started cold.
  if (answer == "ready") answer = nextLine(std::chrono::seconds(10));
  if (!answer) throw std::runtime_error("has ended, and was to: " + line);
  if (answer == "unknown") throw std::logic_error("not understood: " + line);
  return *answer;
}

void ProgramProcess::quit() {
  static_cast<void>(write(input_.fileHandleForWriting.fileDescriptor, "quit\n", 5));
}

std::optional<std::string> ProgramProcess::nextLine(milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  for (;;) {
    if (const auto at = read_.find('\n'); at != std::string::npos) {
      std::string line = read_.substr(0, at);
      read_.erase(0, at + 1);
      return line;
    }
    const auto left =
        std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now()).count();
    const int output = output_.fileHandleForReading.fileDescriptor;
    pollfd waiting{.fd = output, .events = POLLIN, .revents = 0};
    if (left <= 0 || poll(&waiting, 1, static_cast<int>(left)) <= 0) throw std::runtime_error("no answer");
    char bytes[256];
    const ssize_t count = read(output, bytes, sizeof bytes);
    if (count <= 0) return std::nullopt;
    read_.append(bytes, static_cast<std::size_t>(count));
  }
}

bool ProgramProcess::endsWithin(milliseconds deadline) {
  try {
    while (nextLine(deadline)) continue;
    return true;
  } catch (const std::runtime_error&) {
    return false;
  }
}

}  // namespace pellar::contract
