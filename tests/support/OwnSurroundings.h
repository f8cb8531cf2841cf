#pragma once

#include <stdlib.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace pellar::test {

// Whether a variable is for the tests themselves, and not for the desktop of whose user runs them.
inline bool isForTests(std::string_view name) {
  for (const std::string_view beginning : {"GTEST_", "GCOV_", "LLVM_PROFILE_", "PELLAR_", "RC_"})
    if (name.starts_with(beginning)) return true;
  return name == "PATH" || name == "TMPDIR" || name.ends_with("SAN_OPTIONS");
}

// Takes away what a user has set for his desktop (a scale, a style, a language, a bus, fonts of his own), so
// that a toolkit in this process does on every machine the same. Before anything reads the environment.
inline void leaveTheUsersSurroundings() {
  std::vector<std::string> others;
  for (char** each = environ; *each != nullptr; ++each) {
    const std::string_view variable(*each);
    const auto name = variable.substr(0, variable.find('='));
    if (!isForTests(name)) others.emplace_back(name);
  }
  for (const auto& name : others) unsetenv(name.c_str());
  setenv("LANG", "C.UTF-8", 1);
  setenv("HOME", "/nonexistent", 1);
}

}  // namespace pellar::test
