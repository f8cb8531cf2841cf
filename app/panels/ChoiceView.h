#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
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
    if (const auto choice = choiceAt(event.location)) take(*choice);
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

  [[nodiscard]] AccessibleElement accessibleElement() const final {
    AccessibleElement whole = describeWhole();
    std::size_t number = 0;
    for (const auto& [rect, choice] : parts()) {
      whole.children.push_back({.id = partId(number++),
                                .role = AccessibleRole::button,
                                .name = std::string(name(choice)),
                                .help = std::string(help(choice)),
                                .frame = rect,
                                .canBePressed = true});
    }
    return whole;
  }
  bool perform(AccessibleAction action, const std::string& id) final {
    if (action != AccessibleAction::press) return false;
    std::size_t number = 0;
    for (const auto& [rect, choice] : parts()) {
      if (partId(number++) != id) continue;
      take(choice);
      return true;
    }
    return false;
  }

 protected:
  using Parts = std::vector<std::pair<ViewRect, Choice>>;

  explicit ChoiceView(ViewHost& host) : host_(host) {}

  [[nodiscard]] virtual Parts parts() const = 0;
  // May do away with the view.
  virtual void choose(Choice choice) = 0;
  // The view with what is seen in it besides its parts.
  [[nodiscard]] virtual AccessibleElement describeWhole() const = 0;
  // What a part is called, and what more is to be said of it.
  [[nodiscard]] virtual std::string_view name(Choice choice) const = 0;
  [[nodiscard]] virtual std::string_view help(Choice choice) const = 0;

  [[nodiscard]] ViewHost& host() const { return host_; }
  // Whether the pointer is on the part.
  [[nodiscard]] bool isLit(Choice choice) const { return lit_ == choice; }

 private:
  static std::string partId(std::size_t number) { return "part " + std::to_string(number); }
  // May do away with the view.
  void take(Choice choice) {
    const auto alive = alive_.watch();
    choose(choice);
    if (alive) notify(onChosen);
  }
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
