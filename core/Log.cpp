#include "core/Log.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "core/HomeFolder.h"
#include "core/Utf8.h"

namespace pellar::Log {

namespace {

struct Shared {
  std::mutex settings;
  std::optional<std::filesystem::path> url;
  std::function<std::int64_t()> clock;
  std::mutex file;
};

// Never destroyed: a thread may still log while the program exits.
Shared& shared() {
  static auto* const value = new Shared;
  return *value;
}

std::int64_t now() {
  std::function<std::int64_t()> clock;
  {
    const std::lock_guard lock(shared().settings);
    clock = shared().clock;
  }
  // Called without the lock: the clock may log.
  return clock ? clock() : static_cast<std::int64_t>(std::time(nullptr));
}

std::string timeStamp(std::int64_t secondsSince1970) {
  using namespace std::chrono;
  // The format has four digits for the year.
  constexpr std::int64_t latest = 253402300799;    // 9999-12-31T23:59:59Z
  constexpr std::int64_t earliest = -62167219200;  // 0000-01-01T00:00:00Z
  const std::int64_t clamped = std::min(std::max(secondsSince1970, earliest), latest);
  const sys_seconds time{seconds{clamped}};
  const auto day = floor<days>(time);
  const year_month_day date{day};
  const hh_mm_ss clock{time - day};
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()));
  return text.data();
}

void append(const std::filesystem::path& file, std::string_view line) {
  const std::lock_guard lock(shared().file);
  // Appending seeks to the end with each write, also when another process writes too. Not blocking, so that a
  // pipe without a reader cannot hold the program up.
  const int descriptor =
      ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0600);
  if (descriptor < 0) return;
  while (!line.empty()) {
    const ssize_t written = ::write(descriptor, line.data(), line.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    line.remove_prefix(static_cast<std::size_t>(written));
  }
  ::close(descriptor);
}

}  // namespace

void write(std::string_view message) noexcept {
  try {
    append(url(), timeStamp(now()) + " " + Utf8::repaired(message) + "\n");
  } catch (const std::exception&) {
    // Logging never disturbs the caller, and there is nowhere left to say it.
  }
}

std::filesystem::path url() {
  const std::lock_guard lock(shared().settings);
  auto& url = shared().url;
  if (!url) url = homeFolder() / "Library" / "Logs" / "Pellar.log";
  return *url;
}

void setUrl(std::filesystem::path url) {
  const std::lock_guard lock(shared().settings);
  shared().url = std::move(url);
}

void setClock(std::function<std::int64_t()> secondsSince1970) {
  const std::lock_guard lock(shared().settings);
  shared().clock = std::move(secondsSince1970);
}

}  // namespace pellar::Log
