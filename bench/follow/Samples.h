#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace pellar::bench {

using Clock = std::chrono::steady_clock;

// The value below which that share (0...1) of the values lies; 0 without values.
inline double quantile(std::vector<double> values, double share) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  const auto index = static_cast<std::size_t>(share * static_cast<double>(values.size() - 1) + 0.5);
  return values[index];
}

inline double median(const std::vector<double>& values) {
  return quantile(values, 0.5);
}

inline double microseconds(Clock::duration duration) {
  return std::chrono::duration<double, std::micro>(duration).count();
}

// One quantity of one program, by round.
struct Samples {
  std::vector<std::vector<double>> rounds;
  int missed = 0;  // reactions that did not come in time

  [[nodiscard]] std::vector<double> medians() const {
    std::vector<double> result;
    for (const auto& round : rounds) result.push_back(median(round));
    return result;
  }
  [[nodiscard]] std::vector<double> all() const {
    std::vector<double> result;
    for (const auto& round : rounds) result.insert(result.end(), round.begin(), round.end());
    return result;
  }
};

}  // namespace pellar::bench
