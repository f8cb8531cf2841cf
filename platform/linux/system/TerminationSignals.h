#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace pellar {

// Calls back from the main loop when the process is asked to end (SIGTERM, SIGINT, SIGHUP). One object a
// process, made after the toolkit's application object.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> onSignal);
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  int counter_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace pellar
