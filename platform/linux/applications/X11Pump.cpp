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

// A notification's callback posts the refresh it asks for: both turns are run before the pump ends.
constexpr int turnsPerPump = 2;

// The press itself is delivered after them. What arrived behind it counts later.
constexpr int turnsWithPress = turnsPerPump + 1;

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
      report(turnsWithPress);
    } else if (arrived == X11Connection::Arrived::nothing && !reads) {
      break;
    }
  }
  if (connection_.lost()) {
    notifier_->setEnabled(false);
    if (!std::exchange(reportedLoss_, true)) onLost_();
    return;
  }
  report(turnsPerPump);
  connection_.flush();
}

void X11Pump::report(int turns) {
  applications_.update();
  loop_.runPosted(turns);
}

void X11Pump::beforeSleep() {
  connection_.flush();
  // Writes and replies read events too; nothing on the socket would announce those.
  const bool lost = connection_.lost() && !reportedLoss_;
  if ((lost || connection_.hasUnseenEvents() || mirror_.hasNews()) && !std::exchange(pumpPosted_, true)) {
    loop_.post([this, alive = std::weak_ptr(alive_)] {
      if (alive.expired()) return;
      pumpPosted_ = false;
      pump();
    });
  }
}

}  // namespace pellar
