#include "platform/linux/panel/AccessiblePart.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace pellar {

void AccessiblePart::assign(const AccessibleElement& element) {
  element_ = element;
  element_.children.clear();
  std::vector<AccessiblePart*> before = std::exchange(children_, {});
  for (const AccessibleElement& child : element.children) {
    const auto same =
        std::ranges::find_if(before, [&](const AccessiblePart* part) { return part->id() == child.id; });
    if (same != before.end()) {
      children_.push_back(*same);
      before.erase(same);
    } else {
      children_.push_back(new AccessiblePart(this, place_));
    }
    children_.back()->assign(child);
  }
  for (AccessiblePart* const gone : before) remove(gone);
}

AccessiblePart* AccessiblePart::find(const std::vector<std::string>& path, std::size_t step) {
  if (step == path.size()) return this;
  for (AccessiblePart* const child : children_)
    if (child->id() == path[step]) return child->find(path, step + 1);
  return nullptr;
}

void AccessiblePart::remove(AccessiblePart* part) {
  for (AccessiblePart* const child : std::exchange(part->children_, {})) remove(child);
  QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(part));
}

QAccessibleInterface* AccessiblePart::childAt(int x, int y) const {
  const auto found = std::ranges::find_if(
      children_, [&](const AccessiblePart* part) { return part->rect().contains(x, y); });
  return found == children_.end() ? nullptr : *found;
}

QAccessibleInterface* AccessiblePart::parent() const {
  if (parent_ != nullptr) return parent_;
  return QAccessible::queryAccessibleInterface(QCoreApplication::instance());
}

QAccessibleInterface* AccessiblePart::child(int index) const {
  return index >= 0 && index < childCount() ? children_[static_cast<std::size_t>(index)] : nullptr;
}

int AccessiblePart::indexOfChild(const QAccessibleInterface* child) const {
  const auto found = std::ranges::find(children_, child);
  return found == children_.end() ? -1 : static_cast<int>(found - children_.begin());
}

QString AccessiblePart::text(QAccessible::Text which) const {
  if (which == QAccessible::Name) return QString::fromStdString(element_.name);
  if (which == QAccessible::Description) return QString::fromStdString(element_.help);
  return {};
}

QAccessible::Role AccessiblePart::role() const {
  switch (element_.role) {
    case AccessibleRole::group:
      return parent_ == nullptr ? QAccessible::Window : QAccessible::Grouping;
    case AccessibleRole::tabGroup:
      return QAccessible::PageTabList;
    case AccessibleRole::tab:
      return QAccessible::PageTab;
    case AccessibleRole::button:
      return QAccessible::Button;
    case AccessibleRole::checkBox:
      return QAccessible::CheckBox;
    case AccessibleRole::searchField:
      return QAccessible::EditableText;
    case AccessibleRole::list:
      return QAccessible::List;
    case AccessibleRole::row:
      return QAccessible::ListItem;
    case AccessibleRole::text:
      return QAccessible::StaticText;
  }
  return QAccessible::NoRole;
}

QAccessible::State AccessiblePart::state() const {
  QAccessible::State state;
  state.selectable = element_.selected.has_value();
  state.selected = element_.selected == true;
  state.checkable = element_.checked.has_value();
  state.checked = element_.checked == true;
  state.focusable = element_.selected.has_value() || element_.role == AccessibleRole::searchField;
  state.focused = element_.focused;
  const AccessiblePart* panel = this;
  while (panel->parent_ != nullptr) panel = panel->parent_;
  state.offscreen = !element_.frame.intersects(panel->element_.frame);
  return state;
}

void* AccessiblePart::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::ActionInterface && (element_.canBePressed || element_.hasMenu))
    return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QStringList AccessiblePart::actionNames() const {
  QStringList names;
  if (element_.canBePressed) names << pressAction();
  if (element_.hasMenu) names << showMenuAction();
  return names;
}

void AccessiblePart::doAction(const QString& name) {
  if (!actionNames().contains(name)) return;
  place_.perform(name == pressAction() ? AccessibleAction::press : AccessibleAction::showMenu, element_.id);
}

}  // namespace pellar
