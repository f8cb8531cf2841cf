#pragma once

#include <filesystem>
#include <string>

#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

// Keeps numbered pictures of the whole desktop in one folder: 01-first.png, 02-second.png ...
class Photographer {
 public:
  // Makes the folder, and removes the numbered pictures an earlier one left there.
  Photographer(XObserver& observer, std::filesystem::path folder);

  // Waits until the desktop holds still and saves what it shows, with the pointer. Returns the file.
  std::filesystem::path take(const std::string& name);

 private:
  XObserver& observer_;
  std::filesystem::path folder_;
  int taken_ = 0;
};

}  // namespace pellar::e2e
