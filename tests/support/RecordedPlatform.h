#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/sim/SimMac.h"

namespace pellar {

// A simulated Mac's platform that notes, in their order, the calls of which the order matters.
class RecordedPlatform {
 public:
  explicit RecordedPlatform(SimMac& mac);
  ~RecordedPlatform();
  RecordedPlatform(const RecordedPlatform&) = delete;
  RecordedPlatform& operator=(const RecordedPlatform&) = delete;

  [[nodiscard]] Platform platform();
  [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }
  void forget() { calls_.clear(); }

 private:
  struct Ports;

  SimMac& mac_;
  std::vector<std::string> calls_;
  std::unique_ptr<Ports> ports_;
};

}  // namespace pellar
