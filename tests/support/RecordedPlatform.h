#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/sim/SimMac.h"

namespace pellar {

// A simulated Mac's platform that notes, in their order, the calls of which the order matters: "write AXMain
// true: Plan", "AXPress: close button of Plan", "activate 2", "every 2000 ms".
class RecordedPlatform {
 public:
  explicit RecordedPlatform(SimMac& mac);
  ~RecordedPlatform();
  RecordedPlatform(const RecordedPlatform&) = delete;
  RecordedPlatform& operator=(const RecordedPlatform&) = delete;

  [[nodiscard]] Platform platform();
  [[nodiscard]] const std::vector<std::string>& calls() const { return calls_; }
  // What was read of other applications, "AXTitle of Plan", and what was registered with them, "AXWindowMoved
  // on the application".
  [[nodiscard]] const std::vector<std::string>& reads() const { return reads_; }
  [[nodiscard]] const std::vector<std::string>& registrations() const { return registrations_; }
  void forget() {
    calls_.clear();
    reads_.clear();
    registrations_.clear();
  }

 private:
  struct Ports;

  SimMac& mac_;
  std::vector<std::string> calls_;
  std::vector<std::string> reads_;
  std::vector<std::string> registrations_;
  std::unique_ptr<Ports> ports_;
};

}  // namespace pellar
