#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "tests/platform/linux/fuzz/BusMessage.h"

namespace pellar::test {

// A bus in this process, on which every program answers what a test makes up. It answers each call, in the
// order in which they come, on a thread of its own.
class LyingBus {
 public:
  // The message that answers a call.
  using Answer = std::function<std::string(const BusCall& call)>;

  explicit LyingBus(Answer answer);
  ~LyingBus();
  LyingBus(const LyingBus&) = delete;
  LyingBus& operator=(const LyingBus&) = delete;

  // As DBUS_SESSION_BUS_ADDRESS says it.
  [[nodiscard]] std::string address() const;

 private:
  // A program that talks to the bus: first in lines, to prove who it is, then in messages.
  struct Client {
    int socket;
    bool speaksMessages = false;
    std::string pending{};
  };

  void serve();
  // False when it is gone.
  bool hear(Client& client) const;
  static void greet(Client& client);
  void answerCalls(Client& client) const;

  Answer answer_;
  std::string name_;
  int listening_ = -1;
  int ending_[2] = {-1, -1};
  std::thread thread_;
};

}  // namespace pellar::test
