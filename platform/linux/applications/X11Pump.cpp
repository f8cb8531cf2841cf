#include "platform/linux/applications/X11Pump.h"

#include <QSocketNotifier>
#include <utility>

#include "platform/linux/applications/X11Applications.h"
#include "platform/linux/system/QtMainLoop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Mirror.h"

namespace pellar {
namespace {

// A window that changes without pause must not keep the rest of the program waiting.
constexpr int roundsPerPump = 4;

}  // namespace

X11Pump::X11Pump(X11Connection& connection, X11Mirror& mirror, X11Applications& applications,
                 QtMainLoop& loop, std::function<void()> onLost)
    : connection_(connection),
      mirror_(mirror),
      applications_(applications),
      loop_(loop),
      onLost_(std::move(onLost)),
      notifier_(std::make_unique<QSocketNotifier>(connection.fileDescriptor(), QSocketNotifier::Read)) {
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { pump(); });
  loop_.setBeforeSleep([this] { beforeSleep(); });
}

X11Pump::~X11Pump() {
  loop_.setBeforeSleep(nullptr);
}

void X11Pump::pump() {
  const QtMainLoop::Turn turn(loop_);
  connection_.flush();
  for (int round = 0; round < roundsPerPump; ++round) {
    const auto arrived = connection_.dispatchArrivedUpToPress();
    const bool reads = mirror_.readStale();
    if (arrived == X11Connection::Arrived::press) {
      // The press is delivered after these reports. What arrived behind it counts later.
      report();
    } else if (arrived == X11Connection::Arrived::nothing && !reads) {
      break;
    }
  }
  if (connection_.lost()) {
    notifier_->setEnabled(false);
    if (!std::exchange(reportedLoss_, true)) onLost_();
    return;
  }
  report();
  connection_.flush();
}

// A notification's callback posts the refresh it asks for, which belongs to the same turn of the loop.
void X11Pump::report() {
  applications_.update();
  loop_.runUntilQuiet();
}

void X11Pump::beforeSleep() {
  if (onQuiet) onQuiet();
  connection_.flush();
  // Writes and replies read events too; nothing on the socket would announce those.
  const bool lost = connection_.lost() && !reportedLoss_;
  if ((lost || connection_.hasUnseenEvents() || mirror_.hasNews()) && !pumpAgain_.active()) {
    pumpAgain_ = loop_.whenQuiet([this] {
      pumpAgain_.cancel();
      pump();
    });
  }
}

}  // namespace pellar
