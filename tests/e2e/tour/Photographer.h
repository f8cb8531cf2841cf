#pragma once

#include <QImage>
#include <filesystem>
#include <string>

#include "tests/e2e/XObserver.h"

namespace pellar::e2e {

// Keeps numbered pictures of whole desktops in one folder: 01-first.png, 02-second.png ...
class Photographer {
 public:
  // Makes the folder, and removes the numbered pictures an earlier one left there.
  explicit Photographer(std::filesystem::path folder);

  // Waits until the desktop holds still and saves what it shows, with the pointer. Returns the file.
  std::filesystem::path take(XObserver& desktop, const std::string& name);
  // The same without waiting.
  std::filesystem::path takeAtOnce(XObserver& desktop, const std::string& name);

 private:
  std::filesystem::path save(XObserver& desktop, QImage picture, const std::string& name);

  std::filesystem::path folder_;
  int taken_ = 0;
};

}  // namespace pellar::e2e
