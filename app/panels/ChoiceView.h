#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "core/Alive.h"
#include "core/Notify.h"
#include "platform/View.h"

namespace pellar {

// A panel's view whose parts light up under the pointer and are chosen by a click. Main thread only.
template <class Choice>
class ChoiceView : public View {
 public:
  std::function<void(bool inside)> onHoverChanged;  // the pointer entered or left the view
  std::function<void()> onChosen;                   // after every choice

  void layout() final {}
  void mouseDown(const MouseEvent& event) final {
    const auto choice = choiceAt(event.location);
    if (!choice) return;
    const auto alive = alive_.watch();
    choose(*choice);
    if (alive) notify(onChosen);
  }
  void mouseDragged(const MouseEvent& /*event*/) final {}
  void mouseUp(const MouseEvent& /*event*/) final {}
  void rightMouseDown(const MouseEvent& /*event*/) final {}
  void otherMouseDown(const MouseEvent& /*event*/) final {}
  void mouseEntered() final { notify(onHoverChanged, true); }
  void mouseMoved(const MouseEvent& event) final { light(choiceAt(event.location)); }
  void mouseExited() final {
    light(std::nullopt);
    notify(onHoverChanged, false);
  }

 protected:
  using Parts = std::vector<std::pair<ViewRect, Choice>>;

  explicit ChoiceView(ViewHost& host) : host_(host) {}

  [[nodiscard]] virtual Parts parts() const = 0;
  // May do away with the view.
  virtual void choose(Choice choice) = 0;

  [[nodiscard]] ViewHost& host() const { return host_; }
  // Whether the pointer is on the part.
  [[nodiscard]] bool isLit(Choice choice) const { return lit_ == choice; }

 private:
  [[nodiscard]] std::optional<Choice> choiceAt(ViewPoint point) const {
    for (const auto& [rect, choice] : parts())
      if (rect.contains(point)) return choice;
    return std::nullopt;
  }
  void light(std::optional<Choice> choice) {
    if (std::exchange(lit_, choice) != choice) host_.setNeedsDisplay();
  }

  ViewHost& host_;
  std::optional<Choice> lit_;
  Alive alive_;
};

}  // namespace pellar
