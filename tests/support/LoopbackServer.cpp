#include "tests/support/LoopbackServer.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace pellar {

namespace {

constexpr int betweenBytes = 100;  // milliseconds

}  // namespace

LoopbackServer::LoopbackServer() : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof place;
  auto* const address = reinterpret_cast<sockaddr*>(&place);
  if (listener_ < 0 || bind(listener_, address, length) != 0 || listen(listener_, 16) != 0 ||
      getsockname(listener_, address, &length) != 0 || pipe2(stop_, O_CLOEXEC) != 0)
    throw std::runtime_error("no server can be started on the loopback");
  port_ = ntohs(place.sin_port);
  thread_ = std::thread([this] { serve(); });
}

LoopbackServer::~LoopbackServer() {
  close(stop_[1]);
  thread_.join();
  for (const auto& each : open_) close(each.descriptor);
  close(stop_[0]);
  close(listener_);
}

void LoopbackServer::answer(std::function<std::string(const std::string& path)> answer) {
  const std::lock_guard lock(mutex_);
  answer_ = std::move(answer);
  dribble_.reset();
}

void LoopbackServer::dribble(const std::string& bytes) {
  const std::lock_guard lock(mutex_);
  dribble_ = bytes;
}

std::string LoopbackServer::whole(const std::string& body, const std::string& status) {
  return "HTTP/1.1 " + status +
         "\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: " +
         std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string LoopbackServer::address() const {
  return "http://127.0.0.1:" + std::to_string(port_);
}

std::vector<std::string> LoopbackServer::asked() const {
  const std::lock_guard lock(mutex_);
  return asked_;
}

void LoopbackServer::serve() {
  for (;;) {
    pollfd entries[2] = {{stop_[0], POLLIN, 0}, {listener_, POLLIN, 0}};
    const bool dribbles =
        std::ranges::any_of(open_, [](const Open& each) { return each.dribble.has_value(); });
    if (poll(entries, 2, dribbles ? betweenBytes : -1) < 0 || entries[0].revents != 0) return;
    sendDribbles();
    if (entries[1].revents == 0) continue;
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0) continue;
    if (serveConnection(connection)) {
      close(connection);
    } else {
      const std::lock_guard lock(mutex_);
      open_.push_back({connection, dribble_});
    }
  }
}

void LoopbackServer::sendDribbles() {
  for (auto& each : open_) {
    if (!each.dribble) continue;
    const char next = each.dribble->empty() ? ' ' : each.dribble->front();
    each.dribble->erase(0, 1);
    if (send(each.descriptor, &next, 1, MSG_NOSIGNAL) <= 0) each.dribble.reset();
  }
}

// False when the connection is to stay open.
bool LoopbackServer::serveConnection(int connection) {
  std::string request;
  // What begins like that is encrypted, and has no end that is known here.
  const auto isEncrypted = [&] { return request.starts_with('\x16'); };
  while (!isEncrypted() && request.find("\r\n\r\n") == std::string::npos) {
    pollfd entries[2] = {{stop_[0], POLLIN, 0}, {connection, POLLIN, 0}};
    char part[4096];
    if (poll(entries, 2, -1) < 0 || entries[0].revents != 0) return true;
    const auto length = read(connection, part, sizeof part);
    if (length <= 0) return true;
    request.append(part, static_cast<std::size_t>(length));
  }
  const auto begin = request.find(' ') + 1;
  const std::string path =
      isEncrypted() ? std::string() : request.substr(begin, request.find(' ', begin) - begin);
  std::string answer;
  {
    const std::lock_guard lock(mutex_);
    asked_.push_back(path);
    if (dribble_) return false;
    if (answer_) answer = answer_(path);
  }
  if (answer.empty()) return false;
  std::size_t sent = 0;
  while (sent < answer.size()) {
    const auto length = send(connection, answer.data() + sent, answer.size() - sent, MSG_NOSIGNAL);
    if (length <= 0) return true;
    sent += static_cast<std::size_t>(length);
  }
  return true;
}

}  // namespace pellar
