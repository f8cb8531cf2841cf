#include "tests/platform/mac/OneAnswerServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

namespace pellar::contract {
namespace {

bool isReadable(int file, int milliseconds) {
  pollfd waiting{file, POLLIN, 0};
  return poll(&waiting, 1, milliseconds) > 0;
}

}  // namespace

OneAnswerServer::OneAnswerServer(std::string answer, Afterwards afterwards)
    : answer_(std::move(answer)), afterwards_(afterwards), listening_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* const place = reinterpret_cast<sockaddr*>(&address);
  if (listening_ < 0 || bind(listening_, place, length) != 0 || listen(listening_, 8) != 0 ||
      getsockname(listening_, place, &length) != 0) {
    throw std::runtime_error("no server on this machine");
  }
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

OneAnswerServer::~OneAnswerServer() {
  ended_ = true;
  thread_.join();
  for (const int connection : kept_) close(connection);
  close(listening_);
}

std::string OneAnswerServer::url() const {
  return "http://127.0.0.1:" + std::to_string(port_) + "/v1/update";
}

std::string OneAnswerServer::with(const std::string& status, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nConnection: close\r\nContent-Type: application/json\r\n\r\n" + body;
}

std::string OneAnswerServer::sendingTo(const std::string& address) {
  return "HTTP/1.1 302 Found\r\nLocation: " + address + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

void OneAnswerServer::serve() {
  while (!ended_) {
    if (!isReadable(listening_, 20)) continue;
    const int connection = accept(listening_, nullptr, nullptr);
    if (connection < 0) continue;
    answer(connection);
    if (afterwards_ == Afterwards::waits) {
      kept_.push_back(connection);
    } else {
      close(connection);
    }
  }
}

void OneAnswerServer::answer(int connection) {
#ifdef SO_NOSIGPIPE
  // The client may have gone.
  const int on = 1;
  setsockopt(connection, SOL_SOCKET, SO_NOSIGPIPE, &on, sizeof on);
#endif
  std::string request;
  while (request.find("\r\n\r\n") == std::string::npos) {
    char bytes[512];
    if (!isReadable(connection, 1000)) return;
    const auto count = recv(connection, bytes, sizeof bytes, 0);
    if (count <= 0) return;
    request.append(bytes, static_cast<std::size_t>(count));
  }
  ++requests_;
  for (std::size_t sent = 0; sent < answer_.size();) {
    const auto count = send(connection, answer_.data() + sent, answer_.size() - sent, 0);
    if (count <= 0) return;
    sent += static_cast<std::size_t>(count);
  }
}

}  // namespace pellar::contract
