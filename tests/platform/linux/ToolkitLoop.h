#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <chrono>
#include <functional>

namespace pellar::test {

// Runs the toolkit's loop until a condition holds; false when it does not by the deadline.
inline bool runToolkitUntil(const std::function<bool()>& condition,
                            std::chrono::milliseconds deadline = std::chrono::seconds(10)) {
  const QDeadlineTimer end(deadline);
  // Some conditions come true outside the loop, with no event of it.
  QTimer look;
  look.start(std::chrono::milliseconds(5));
  while (!condition()) {
    if (end.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return true;
}

// The same as a running program does it: what is to be deleted later goes between two events.
inline bool runToolkitAsAProgramUntil(const std::function<bool()>& condition,
                                      std::chrono::milliseconds deadline = std::chrono::seconds(10)) {
  return runToolkitUntil(
      [&condition] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return condition();
      },
      deadline);
}

}  // namespace pellar::test
