#pragma once

#include <QAccessibleActionInterface>
#include <QAccessibleInterface>
#include <functional>
#include <string>
#include <vector>

#include "platform/AccessibleElement.h"

namespace pellar {

// What a part needs of the panel that it is in.
struct AccessiblePlace {
  // Where a rectangle of the view is, in pixels of the whole X screen; empty once the panel is gone.
  std::function<QRect(const ViewRect&)> onScreen;
  // Has the element do that soon, from the main loop.
  std::function<void(AccessibleAction, const std::string& id)> perform;
};

// An element of a panel as the toolkit hands it to assistive technologies. A panel's own is at the top. The
// toolkit keeps it and deletes it, by `remove`.
class AccessiblePart final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  // `parent` is null at the top.
  AccessiblePart(AccessiblePart* parent, AccessiblePlace place) : parent_(parent), place_(std::move(place)) {}

  // Becomes this element, with parts for all that it holds; those that stay the same element stay.
  void assign(const AccessibleElement& element);
  // The part under a path of ids; null when there is none.
  [[nodiscard]] AccessiblePart* find(const std::vector<std::string>& path, std::size_t step = 0);
  [[nodiscard]] const std::string& id() const { return element_.id; }
  static void remove(AccessiblePart* part);

  [[nodiscard]] bool isValid() const override { return true; }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* parent() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int childCount() const override { return static_cast<int>(children_.size()); }
  int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QString text(QAccessible::Text which) const override;
  void setText(QAccessible::Text /*which*/, const QString& /*text*/) override {}
  [[nodiscard]] QRect rect() const override { return place_.onScreen(element_.frame); }
  [[nodiscard]] QAccessible::Role role() const override;
  [[nodiscard]] QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;
  [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

 private:
  ~AccessiblePart() override = default;

  AccessiblePart* parent_;
  AccessiblePlace place_;
  AccessibleElement element_;  // without its children
  std::vector<AccessiblePart*> children_;
};

}  // namespace pellar
