#include "platform/linux/system/TerminationSignals.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <utility>

namespace pellar {
namespace {

constexpr int endingSignals[] = {SIGTERM, SIGINT, SIGHUP};

// What the handler may touch: written before it is installed.
std::atomic<int> signalledCounter{-1};

void note(int) {
  const int savedError = errno;
  const std::uint64_t one = 1;
  // The counter can only refuse when a signal is already pending.
  [[maybe_unused]] const auto written = write(signalledCounter.load(), &one, sizeof one);
  errno = savedError;
}

void handleWith(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : endingSignals) sigaction(signal, &action, nullptr);
}

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
    : counter_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      notifier_(std::make_unique<QSocketNotifier>(counter_, QSocketNotifier::Read)) {
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [counter = counter_, onSignal = std::move(onSignal)] {
                     std::uint64_t count = 0;
                     if (read(counter, &count, sizeof count) > 0) onSignal();
                   });
  signalledCounter = counter_;
  handleWith(&note);
}

TerminationSignals::~TerminationSignals() {
  handleWith(SIG_DFL);
  notifier_.reset();
  close(counter_);
}

}  // namespace pellar
