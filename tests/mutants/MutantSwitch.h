#pragma once

#include <cstdio>
#include <cstdlib>
#include <type_traits>

// Compiled into every source of the mutated program, where one mutant is chosen for a whole run.
namespace mutants {

inline constexpr int most = 40000;

// The number of the mutant that is alive, from PELLAR_MUTANT; 0 when none is.
inline const int chosen = [] {
  const char* const number = std::getenv("PELLAR_MUTANT");
  return number == nullptr ? 0 : std::atoi(number);
}();

inline bool reached[most];

inline bool on(int mutant) {
  reached[mutant] = true;
  return mutant == chosen;
}

// In functions that constants are computed with: what the compiler computes is not mutated.
template <int mutant>
constexpr bool onWhenRun() {
  if (std::is_constant_evaluated()) return false;
  return on(mutant);
}

// Adds to the file that PELLAR_MUTANTS_REACHED names the numbers of the mutants whose code was run.
struct Reached {
  ~Reached() {
    const char* const name = std::getenv("PELLAR_MUTANTS_REACHED");
    std::FILE* const file = name == nullptr ? nullptr : std::fopen(name, "a");
    if (file == nullptr) return;
    for (int mutant = 0; mutant < most; ++mutant)
      if (reached[mutant]) std::fprintf(file, "%d\n", mutant);
    std::fclose(file);
  }
};
inline const Reached reachedAtTheEnd;

}  // namespace mutants
