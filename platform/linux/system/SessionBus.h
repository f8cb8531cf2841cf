#pragma once

#include <QString>
#include <chrono>
#include <functional>
#include <limits>
#include <optional>

class QDBusMessage;
class QDBusPendingCall;
class QObject;

// The user's session bus, without ever starting one.
namespace pellar::SessionBus {

// How long an answer of a program on it is waited for: the program may first have to start.
inline constexpr int answerMilliseconds = 5000;

// Where it is: what the environment says, else the usual place of the run-time folder. Absent when there is
// none.
[[nodiscard]] std::optional<QString> address();

// Whether a bus listens and greets at one of an address's local sockets. The libraries wait for a bus that
// hangs much longer than anybody would, also when the program ends. An address of another kind is taken to
// answer.
[[nodiscard]] bool answers(const QString& address, std::chrono::steady_clock::time_point deadline);

// The time limit of a call that nobody waits for: none, in the library's milliseconds. It ends with its
// callee.
constexpr int untilAnswered = std::numeric_limits<int>::max();

// The address of a bus that answers within that time; absent when there is none.
[[nodiscard]] std::optional<QString> answering(std::chrono::milliseconds time);

// Has what comes of a call, an answer or an error, received from the main loop, on any bus; nothing is once
// `receiver` is gone.
void whenAnswered(const QDBusPendingCall& call, QObject* receiver,
                  std::function<void(const QDBusMessage& answer)> receive);

}  // namespace pellar::SessionBus
