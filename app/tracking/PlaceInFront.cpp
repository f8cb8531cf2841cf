#include "app/tracking/PlaceInFront.h"

#include "core/Weakly.h"

namespace pellar {

std::shared_ptr<PlaceInFront> PlaceInFront::create(Workspace& workspace) {
  std::shared_ptr<PlaceInFront> place(new PlaceInFront(workspace));
  const std::weak_ptr weak(place);
  place->activated_ = workspace.onActivated(weakly(weak, [](PlaceInFront& self) { self.activated(); }));
  place->terminated_ = workspace.onTerminated(
      weakly(weak, [](PlaceInFront& self, std::optional<ProcessId> pid) { self.terminated(pid); }));
  return place;
}

bool PlaceInFront::isOurs() const {
  const auto front = workspace_.frontmostApplication();
  return front && isThisProgram(*front, workspace_);
}

void PlaceInFront::noteOther() {
  const auto front = workspace_.frontmostApplication();
  if (!front || isThisProgram(*front, workspace_)) return;
  std::erase(others_, front->pid);
  others_.push_back(front->pid);
}

void PlaceInFront::take() {
  // It may have come to the front before this program was told, or before it was there.
  noteOther();
  asked_ = !isOurs();
  owed_ = false;
  workspace_.activateIgnoringOtherApps();
}

void PlaceInFront::giveBack() {
  if (questions_ > 0 || (asked_ && !isOurs())) {
    owed_ = true;
    return;
  }
  owed_ = false;
  if (isOurs() && !others_.empty()) workspace_.activate(others_.back());
}

void PlaceInFront::during(const std::function<void()>& question) {
  const bool ours = isOurs();
  const auto self = shared_from_this();
  {
    const Subscription ended([self] { --self->questions_; });
    ++questions_;
    if (questions_ == 1) take();
    question();
  }
  if (questions_ == 0 && (!ours || owed_)) giveBack();
}

void PlaceInFront::activated() {
  noteOther();
  asked_ = asked_ && !isOurs();
  if (owed_) giveBack();
}

void PlaceInFront::terminated(std::optional<ProcessId> pid) {
  if (pid) std::erase(others_, *pid);
}

}  // namespace pellar
