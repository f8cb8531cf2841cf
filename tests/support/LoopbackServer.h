#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace pellar {

// A web server on this machine that answers as it is told, well or badly. Its thread ends with it.
class LoopbackServer {
 public:
  LoopbackServer();
  ~LoopbackServer();
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  // What is sent, byte by byte, for a path; then the connection is closed. Empty for silence: the connection
  // stays open.
  void answer(std::function<std::string(const std::string& path)> answer);
  // A whole answer with this body for every path.
  void answerBody(const std::string& body) {
    answer([body](const std::string&) { return whole(body); });
  }
  // For every path from now on: these bytes one by one, ten a second, and then spaces without end.
  void dribble(const std::string& bytes);
  [[nodiscard]] static std::string whole(const std::string& body, const std::string& status = "200 OK");

  // Without a slash at its end.
  [[nodiscard]] std::string address() const;
  // The paths that were asked for.
  [[nodiscard]] std::vector<std::string> asked() const;

 private:
  // A connection that stays open, and what it is still to be sent; absent for silence.
  struct Open {
    int descriptor;
    std::optional<std::string> dribble;
  };

  void serve();
  void sendDribbles();
  bool serveConnection(int connection);

  int listener_;
  int stop_[2] = {-1, -1};
  std::uint16_t port_ = 0;
  mutable std::mutex mutex_;
  std::function<std::string(const std::string&)> answer_;  // guarded by mutex_, as the next two
  std::optional<std::string> dribble_;
  std::vector<std::string> asked_;
  std::vector<Open> open_;  // of the thread
  std::thread thread_;
};

}  // namespace pellar
