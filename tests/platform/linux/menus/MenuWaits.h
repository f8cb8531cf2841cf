#pragma once

#include <chrono>
#include <functional>

namespace pellar::contract {

// Longer than any walk may take, and much shorter than what waits for an answer without end.
inline constexpr std::chrono::milliseconds wholeWalk{2500};
// Far less than what is waited for an answer, and more than a busy machine takes.
inline constexpr std::chrono::milliseconds noWait{700};

inline std::chrono::milliseconds timeOf(const std::function<void()>& deed) {
  const auto start = std::chrono::steady_clock::now();
  deed();
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

}  // namespace pellar::contract
