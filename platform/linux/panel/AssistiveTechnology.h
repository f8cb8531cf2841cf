#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

namespace pellar {

// Whether a screen reader, or another program that reads and works windows, wants to hear of this one: what
// the session says of it (org.a11y.Status), also when that changes. Starts nothing on the session bus, which
// there is, and waits for no answer. Main thread only.
class AssistiveTechnology {
 public:
  // `onChanged` is called from the main loop: first with true, once somebody listens.
  explicit AssistiveTechnology(std::function<void(bool listening)> onChanged);
  ~AssistiveTechnology();
  AssistiveTechnology(const AssistiveTechnology&) = delete;
  AssistiveTechnology& operator=(const AssistiveTechnology&) = delete;

 private:
  void ask();
  void tell(bool listening);

  std::function<void(bool)> onChanged_;
  bool listening_ = false;
  QTimer changed_;                    // runs for a turn when the session says something else
  std::unique_ptr<QObject> service_;  // watches who says so on the bus
  QObject answers_;                   // none is received once it is gone
};

}  // namespace pellar
