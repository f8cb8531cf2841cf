#pragma once

#include <sys/types.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

// What a program holds of the machine and of the X server at one moment.
struct Footprint {
  std::size_t residentKilobytes = 0;
  std::size_t descriptors = 0;
  std::size_t threads = 0;
  std::size_t pixmapKilobytes = 0;               // in the X server
  std::map<std::string, std::size_t> resources;  // in the X server, by their type, all connections together

  [[nodiscard]] std::size_t resourceCount() const;
  // One line.
  [[nodiscard]] std::string text() const;
};

// The X server must know the extension X-Resource.
[[nodiscard]] Footprint footprintOf(pid_t process, XObserver& observer);

// The largest of each figure.
[[nodiscard]] Footprint largestOf(const std::vector<Footprint>& all);

}  // namespace pellar::e2e
