#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Accessibility.h"
#include "platform/Subscription.h"
#include "platform/Workspace.h"

namespace pellar {

// The place in front, and with it the keyboard: this program takes it for a window or a question of its own
// and gives it back to the application that had it. The system does not: a program without a Dock icon stays
// in front when its last window closes, and no window has the keyboard until the user clicks. Main thread
// only.
class PlaceInFront : public std::enable_shared_from_this<PlaceInFront> {
 public:
  // `workspace` outlives this.
  static std::shared_ptr<PlaceInFront> create(Workspace& workspace);
  PlaceInFront(const PlaceInFront&) = delete;
  PlaceInFront& operator=(const PlaceInFront&) = delete;

  // Asks for the place, for a window of this program.
  void take();
  // No window of this program needs it any more. The application that was last in front and still runs gets
  // it back, unless the user has gone to one already. While a question is open this waits for its end.
  void giveBack();
  // Takes the place while a question is asked, which runs a nested loop, and gives it back to whom it was
  // taken from: also to a window of this program.
  void during(const std::function<void()>& question);

 private:
  explicit PlaceInFront(Workspace& workspace) : workspace_(workspace) {}

  [[nodiscard]] bool isOurs() const;
  void noteOther();
  void activated();
  void terminated(std::optional<ProcessId> pid);

  Workspace& workspace_;
  std::vector<ProcessId> others_;  // running applications that were in front, the latest last
  int questions_ = 0;              // open ones
  bool asked_ = false;             // for a place that the system has not given yet
  bool owed_ = false;              // to be given back as soon as it is ours, or the question has ended
  Subscription activated_;
  Subscription terminated_;
};

}  // namespace pellar
