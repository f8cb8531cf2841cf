#include "platform/linux/panel/AccessiblePanels.h"

#include <QAccessible>
#include <QAccessibleApplication>
#include <algorithm>
#include <chrono>
#include <string>
#include <utility>

#include "platform/linux/panel/AccessiblePart.h"
#include "platform/linux/panel/AssistiveTechnology.h"
#include "platform/linux/panel/AtSpiBridge.h"
#include "platform/linux/panel/X11Panel.h"
#include "platform/shared/panel/AccessibleChanges.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// The program: the panels, and behind them the toolkit's own windows.
class AccessibleProgram final : public QAccessibleApplication {
 public:
  explicit AccessibleProgram(std::weak_ptr<const AccessiblePanels::Parts> panels)
      : panels_(std::move(panels)) {}

  [[nodiscard]] int childCount() const override {
    return panelCount() + QAccessibleApplication::childCount();
  }
  [[nodiscard]] QAccessibleInterface* child(int index) const override {
    if (index < 0) return nullptr;
    const int count = panelCount();
    if (index >= count) return QAccessibleApplication::child(index - count);
    return (*panels_.lock())[static_cast<std::size_t>(index)];
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    if (const auto panels = panels_.lock()) {
      const auto found = std::ranges::find(*panels, child);
      if (found != panels->end()) return static_cast<int>(found - panels->begin());
    }
    const int index = QAccessibleApplication::indexOfChild(child);
    return index < 0 ? index : panelCount() + index;
  }
  [[nodiscard]] QString text(QAccessible::Text which) const override {
    return which == QAccessible::Name ? QStringLiteral("Pellar") : QAccessibleApplication::text(which);
  }

 private:
  [[nodiscard]] int panelCount() const {
    const auto panels = panels_.lock();
    return panels ? static_cast<int>(panels->size()) : 0;
  }

  std::weak_ptr<const AccessiblePanels::Parts> panels_;
};

}  // namespace

AccessiblePanels::AccessiblePanels(MainLoop& loop, const Panels& panels,
                                   std::function<void(bool)> onListening)
    : loop_(loop),
      panels_(panels),
      onListening_(std::move(onListening)),
      bridge_(std::make_unique<AtSpiBridge>(loop)) {
  if (AtSpiBridge::canWake())
    technology_ = std::make_unique<AssistiveTechnology>([this](bool listening) { listen(listening); });
}

AccessiblePanels::~AccessiblePanels() {
  clear();
}

void AccessiblePanels::listen(bool listening) {
  listening_ = listening;
  onListening_(listening);
  if (!listening) {
    update_.cancel();
    clear();
    bridge_->sleep();
    return;
  }
  if (!std::exchange(known_, true)) QAccessible::registerAccessibleInterface(new AccessibleProgram(parts_));
  update();
  bridge_->wake();
}

void AccessiblePanels::noteChange() {
  if (!listening_ || update_.active()) return;
  update_ = loop_.after(0ms, [this] { update(); });
}

AccessibleElement AccessiblePanels::everything() const {
  AccessibleElement all;
  for (const auto& [window, panel] : panels_) {
    auto element = panel->accessibleElement();
    if (!element) continue;
    element->id = std::to_string(window);
    all.children.push_back(std::move(*element));
  }
  return all;
}

void AccessiblePanels::update() {
  update_.cancel();
  AccessibleElement now = everything();
  const auto changes = accessibleChanges(told_, now);
  for (const AccessibleChange& change : changes)
    if (change.kind == AccessibleChange::Kind::vanished) tell(change);

  Parts before = std::exchange(*parts_, {});
  for (const AccessibleElement& panel : now.children) {
    const auto same =
        std::ranges::find_if(before, [&](const AccessiblePart* part) { return part->id() == panel.id; });
    if (same != before.end()) {
      parts_->push_back(*same);
      before.erase(same);
    } else {
      parts_->push_back(makePart(static_cast<xcb_window_t>(std::stoul(panel.id))));
    }
    parts_->back()->assign(panel);
  }
  for (AccessiblePart* const gone : before) AccessiblePart::remove(gone);
  told_ = std::move(now);

  for (const AccessibleChange& change : changes)
    if (change.kind != AccessibleChange::Kind::vanished) tell(change);
}

AccessiblePart* AccessiblePanels::makePart(xcb_window_t window) {
  const auto panelOf = [this, window]() -> X11Panel* {
    const auto found = panels_.find(window);
    return found == panels_.end() ? nullptr : found->second;
  };
  const auto onScreen = [panelOf](const ViewRect& rect) {
    const auto* const panel = panelOf();
    return panel == nullptr ? QRect() : panel->onScreenPixels(rect);
  };
  // Later: who asked waits for an answer, and a menu stays open for as long as the user likes.
  const auto perform = [this, panelOf](AccessibleAction action, const std::string& id) {
    loop_.post([panelOf, action, id, parts = std::weak_ptr(parts_)] {
      if (parts.expired()) return;
      if (auto* const panel = panelOf()) panel->perform(action, id);
    });
  };
  return new AccessiblePart(nullptr, {onScreen, perform});
}

void AccessiblePanels::clear() {
  for (AccessiblePart* const part : std::exchange(*parts_, {})) AccessiblePart::remove(part);
  told_ = {};
}

AccessiblePart* AccessiblePanels::partOf(const std::vector<std::string>& path) const {
  for (AccessiblePart* const panel : *parts_)
    if (!path.empty() && panel->id() == path.front()) return panel->find(path, 1);
  return nullptr;
}

void AccessiblePanels::tell(const AccessibleChange& change) {
  AccessiblePart* const part = partOf(change.path);
  if (part == nullptr) return;
  const auto say = [part](QAccessible::Event what) {
    QAccessibleEvent event(part, what);
    QAccessible::updateAccessibility(&event);
  };
  using Kind = AccessibleChange::Kind;
  switch (change.kind) {
    case Kind::vanished:
      return say(QAccessible::ObjectDestroyed);
    case Kind::appeared:
      return say(QAccessible::ObjectCreated);
    case Kind::name:
      return say(QAccessible::NameChanged);
    case Kind::help:
      return say(QAccessible::DescriptionChanged);
    case Kind::selected:
      return say(QAccessible::Selection);
    case Kind::focused:
      if (change.element.focused) say(QAccessible::Focus);
      return;
    case Kind::checked: {
      QAccessible::State changed;
      changed.checked = true;
      QAccessibleStateChangeEvent event(part, changed);
      QAccessible::updateAccessibility(&event);
      return;
    }
  }
}

}  // namespace pellar
