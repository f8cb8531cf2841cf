#include "tests/platform/linux/fuzz/LyingBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace pellar::test {
namespace {

void send(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace

LyingBus::LyingBus(Answer answer)
    : answer_(std::move(answer)), name_("pellar-lying-bus-" + std::to_string(getpid())) {
  sockaddr_un place{};
  place.sun_family = AF_UNIX;
  // Behind a zero byte: a name that is no file.
  std::memcpy(place.sun_path + 1, name_.data(), name_.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name_.size());
  listening_ = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listening_ < 0 || bind(listening_, reinterpret_cast<const sockaddr*>(&place), length) != 0 ||
      listen(listening_, 8) != 0 || pipe(ending_) != 0)
    std::abort();
  thread_ = std::thread([this] { serve(); });
}

LyingBus::~LyingBus() {
  close(ending_[1]);
  thread_.join();
  close(ending_[0]);
  close(listening_);
}

std::string LyingBus::address() const {
  return "unix:abstract=" + name_;
}

void LyingBus::serve() {
  std::vector<Client> clients;
  for (;;) {
    std::vector<pollfd> entries{{ending_[0], POLLIN, 0}, {listening_, POLLIN, 0}};
    for (const Client& each : clients) entries.push_back({each.socket, POLLIN, 0});
    if (poll(entries.data(), entries.size(), -1) < 0) continue;
    if (entries[0].revents != 0) break;
    for (std::size_t index = clients.size(); index > 0; --index) {
      if (entries[index + 1].revents == 0 || hear(clients[index - 1])) continue;
      close(clients[index - 1].socket);
      clients.erase(clients.begin() + static_cast<std::ptrdiff_t>(index - 1));
    }
    if (entries[1].revents != 0) clients.push_back({accept(listening_, nullptr, nullptr)});
  }
  for (const Client& each : clients) close(each.socket);
}

bool LyingBus::hear(Client& client) const {
  std::array<char, 65536> buffer{};
  const auto count = recv(client.socket, buffer.data(), buffer.size(), 0);
  if (count <= 0) return false;
  client.pending.append(buffer.data(), static_cast<std::size_t>(count));
  greet(client);
  answerCalls(client);
  return true;
}

void LyingBus::greet(Client& client) {
  while (!client.speaksMessages) {
    const auto end = client.pending.find("\r\n");
    if (end == std::string::npos) return;
    const std::string line = client.pending.substr(0, end);
    client.pending.erase(0, end + 2);
    client.speaksMessages = line == "BEGIN";
    if (line.find("AUTH") != std::string::npos)
      send(client.socket, "OK 00112233445566778899aabbccddeeff\r\n");
    if (line == "NEGOTIATE_UNIX_FD") send(client.socket, "ERROR\r\n");
  }
}

void LyingBus::answerCalls(Client& client) const {
  while (client.speaksMessages) {
    const auto length = lengthOfMessage(client.pending);
    if (length == 0 || client.pending.size() < length) return;
    const auto call = callIn(std::string_view(client.pending).substr(0, length));
    client.pending.erase(0, length);
    send(client.socket, answer_(call));
  }
}

}  // namespace pellar::test
