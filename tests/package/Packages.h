#pragma once

#include <filesystem>

namespace pellar::e2e {

// What the tests were told to install.
struct Packages {
  std::filesystem::path older;
  std::filesystem::path newer;
  std::filesystem::path roots;  // where clean systems are made, and kept for the next run
};

[[nodiscard]] const Packages& packages();

}  // namespace pellar::e2e
