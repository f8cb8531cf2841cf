#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string_view>

// The diagnostic channel: time-stamped lines appended to a text file. For rare events. Every function may be
// called from any thread.
namespace pellar::Log {

// Appends "<time in UTC> <message>\n". Never fails as far as the caller can see; nothing is written when the
// folder is missing or the file cannot be opened.
void write(std::string_view message) noexcept;

// Where lines go: at first Library/Logs/Pellar.log under the user's home folder.
std::filesystem::path url();
void setUrl(std::filesystem::path url);

// What the time stamps are taken from, in seconds since 1970 UTC. An empty function restores the system's
// clock.
void setClock(std::function<std::int64_t()> secondsSince1970);

}  // namespace pellar::Log
