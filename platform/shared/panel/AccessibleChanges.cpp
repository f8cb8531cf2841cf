#include "platform/shared/panel/AccessibleChanges.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pellar {
namespace {

using Kind = AccessibleChange::Kind;
using Children = std::vector<AccessibleElement>;

const AccessibleElement* childOf(const Children& children, const std::string& id) {
  const auto found = std::ranges::find(children, id, &AccessibleElement::id);
  return found == children.end() ? nullptr : &*found;
}

// The ids of those that are in the other list, too.
std::vector<std::string> common(const Children& children, const Children& others) {
  std::vector<std::string> ids;
  for (const AccessibleElement& child : children)
    if (childOf(others, child.id) != nullptr) ids.push_back(child.id);
  return ids;
}

class Comparison {
 public:
  void compare(const AccessibleElement& before, const AccessibleElement& now) {
    if (before.name != now.name) note(rest_, Kind::name, now);
    if (before.help != now.help) note(rest_, Kind::help, now);
    if (before.selected != now.selected) note(rest_, Kind::selected, now);
    if (before.checked != now.checked) note(rest_, Kind::checked, now);
    if (before.focused != now.focused) note(rest_, Kind::focused, now);

    const bool reordered = common(before.children, now.children) != common(now.children, before.children);
    for (const AccessibleElement& child : before.children)
      if (reordered || childOf(now.children, child.id) == nullptr)
        noteChild(vanished_, Kind::vanished, child);
    for (const AccessibleElement& child : now.children) {
      const auto* const was = reordered ? nullptr : childOf(before.children, child.id);
      if (was == nullptr) {
        noteChild(appeared_, Kind::appeared, child);
        continue;
      }
      path_.push_back(child.id);
      compare(*was, child);
      path_.pop_back();
    }
  }

  std::vector<AccessibleChange> take() {
    std::ranges::move(appeared_, std::back_inserter(vanished_));
    std::ranges::move(rest_, std::back_inserter(vanished_));
    return std::move(vanished_);
  }

 private:
  void note(std::vector<AccessibleChange>& changes, Kind kind, const AccessibleElement& element) {
    changes.push_back({kind, path_, element});
  }
  void noteChild(std::vector<AccessibleChange>& changes, Kind kind, const AccessibleElement& child) {
    path_.push_back(child.id);
    note(changes, kind, child);
    path_.pop_back();
  }

  std::vector<std::string> path_;
  std::vector<AccessibleChange> vanished_;
  std::vector<AccessibleChange> appeared_;
  std::vector<AccessibleChange> rest_;
};

}  // namespace

std::vector<AccessibleChange> accessibleChanges(const AccessibleElement& before,
                                                const AccessibleElement& now) {
  Comparison comparison;
  comparison.compare(before, now);
  return comparison.take();
}

}  // namespace pellar
