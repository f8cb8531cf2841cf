#pragma once

#include <filesystem>
#include <string>

namespace pellar::e2e {

// Works a Pellar program on a private desktop, step by step, telling each step on standard output and leaving
// its picture in `folder`. False, with a line on standard error and a last picture, when a step does not do
// what it should. Nothing that was started runs afterwards.
[[nodiscard]] bool runTour(const std::string& pellarProgram, const std::filesystem::path& folder);

}  // namespace pellar::e2e
