#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

namespace pellar::contract {

// A web server on this machine, on a thread of its own, that answers every request with the same bytes.
class OneAnswerServer {
 public:
  enum class Afterwards { closes, waits };

  // `answer` is the whole answer, status line and headers included. Waiting keeps the connection open until
  // the server is gone.
  explicit OneAnswerServer(std::string answer, Afterwards afterwards = Afterwards::closes);
  ~OneAnswerServer();
  OneAnswerServer(const OneAnswerServer&) = delete;
  OneAnswerServer& operator=(const OneAnswerServer&) = delete;

  [[nodiscard]] std::string url() const;
  [[nodiscard]] int requests() const { return requests_; }

  // An answer with this body and its length.
  [[nodiscard]] static std::string with(const std::string& status, const std::string& body);
  // An answer that sends whoever asks to another address.
  [[nodiscard]] static std::string sendingTo(const std::string& address);

 private:
  void serve();
  void answer(int connection);

  std::string answer_;
  Afterwards afterwards_;
  int listening_ = -1;
  std::uint16_t port_ = 0;
  std::atomic<int> requests_ = 0;
  std::atomic<bool> ended_ = false;
  std::vector<int> kept_;  // connections, of the thread
  std::thread thread_;
};

}  // namespace pellar::contract
