#include "platform/linux/system/SessionBus.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "core/FileUrl.h"

namespace pellar::SessionBus {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::string_view_literals;

class Socket {
 public:
  Socket() : descriptor_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
  ~Socket() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  // `name` begins with a zero byte for an abstract socket.
  [[nodiscard]] bool connectTo(const std::string& name) const {
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (descriptor_ < 0 || name.empty() || name.size() >= sizeof place.sun_path) return false;
    std::memcpy(place.sun_path, name.data(), name.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() +
                                               (name.front() == '\0' ? 0 : 1));
    return connect(descriptor_, reinterpret_cast<const sockaddr*>(&place), length) == 0;
  }
  [[nodiscard]] bool send(std::string_view text) const {
    return ::send(descriptor_, text.data(), text.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(text.size());
  }
  [[nodiscard]] bool hears(Clock::time_point deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd entry{descriptor_, POLLIN, 0};
    return poll(&entry, 1, static_cast<int>(std::max<std::int64_t>(left, 0))) > 0 &&
           (entry.revents & POLLIN) != 0;
  }

 private:
  int descriptor_;
};

// The name of the local socket that one address means; absent for another kind.
std::optional<std::string> socketName(std::string_view address) {
  constexpr auto local = "unix:"sv;
  if (!address.starts_with(local)) return std::nullopt;
  address.remove_prefix(local.size());
  while (!address.empty()) {
    const auto pair = address.substr(0, address.find(','));
    address.remove_prefix(std::min(address.size(), pair.size() + 1));
    if (pair.starts_with("path="sv)) return percentDecoded(pair.substr(5));
    if (pair.starts_with("abstract="sv)) {
      const auto name = percentDecoded(pair.substr(9));
      return name ? std::optional('\0' + *name) : std::nullopt;
    }
  }
  return std::nullopt;
}

bool greets(const std::string& name, Clock::time_point deadline) {
  const Socket socket;
  // The bus names what it accepts, or refuses; either way it is alive.
  return socket.connectTo(name) && socket.send("\0AUTH\r\n"sv) && socket.hears(deadline);
}

}  // namespace

std::optional<QString> address() {
  if (const QByteArray given = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !given.isEmpty()) {
    // Connecting to such an address starts a bus.
    if (given.startsWith("autolaunch:")) return std::nullopt;
    return QString::fromLocal8Bit(given);
  }
  const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
  const QString socket = QString::fromLocal8Bit(folder) + QStringLiteral("/bus");
  if (folder.isEmpty() || !QFileInfo::exists(socket)) return std::nullopt;
  return QStringLiteral("unix:path=") + socket;
}

bool answers(const QString& address, Clock::time_point deadline) {
  const std::string text = address.toStdString();
  for (std::string_view rest = text; !rest.empty();) {
    const auto one = rest.substr(0, rest.find(';'));
    rest.remove_prefix(std::min(rest.size(), one.size() + 1));
    const auto name = socketName(one);
    if (!name || greets(*name, deadline)) return true;
  }
  return false;
}

std::optional<QString> answering(std::chrono::milliseconds time) {
  auto found = address();
  return found && answers(*found, Clock::now() + time) ? found : std::nullopt;
}

void whenAnswered(const QDBusPendingCall& call, QObject* receiver,
                  std::function<void(const QDBusMessage& answer)> receive) {
  auto* const watcher = new QDBusPendingCallWatcher(call, receiver);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                   [watcher, receive = std::move(receive)] {
                     watcher->deleteLater();
                     receive(watcher->reply());
                   });
}

}  // namespace pellar::SessionBus
