#include "platform/sim/user/SimScreenReader.h"

#include <stdexcept>
#include <utility>

#include "platform/shared/panel/AccessibleChanges.h"
#include "platform/sim/panel/SimPanel.h"

namespace pellar {
namespace {

std::string word(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::group:
      return "group";
    case AccessibleRole::tabGroup:
      return "tab group";
    case AccessibleRole::tab:
      return "tab";
    case AccessibleRole::button:
      return "button";
    case AccessibleRole::checkBox:
      return "check box";
    case AccessibleRole::searchField:
      return "search field";
    case AccessibleRole::list:
      return "list";
    case AccessibleRole::row:
      return "row";
    case AccessibleRole::text:
      return "text";
  }
  return {};
}

std::string plain(const AccessibleElement& element) {
  return word(element.role) + " " + element.name;
}

std::string line(const AccessibleElement& element) {
  std::string text = plain(element);
  if (element.selected == true) text += " selected";
  if (element.checked) text += *element.checked ? " checked" : " not checked";
  return text;
}

std::string line(const AccessibleChange& change) {
  using Kind = AccessibleChange::Kind;
  const AccessibleElement& element = change.element;
  switch (change.kind) {
    case Kind::vanished:
      return "- " + plain(element);
    case Kind::appeared:
      return "+ " + plain(element);
    case Kind::name:
      return plain(element) + " is its name now";
    case Kind::help:
      return plain(element) + ": " + element.help;
    case Kind::selected:
      return plain(element) + (element.selected == true ? " selected" : " not selected");
    case Kind::checked:
      return line(element);
    case Kind::focused:
      return plain(element) + (element.focused ? " has the keys" : " has the keys no more");
  }
  return {};
}

void collect(const AccessibleElement& element, std::vector<std::string>& lines) {
  lines.push_back(line(element));
  for (const AccessibleElement& child : element.children) collect(child, lines);
}

const AccessibleElement* findNamed(const AccessibleElement& element, const std::string& above,
                                   std::string_view name) {
  const std::string path = above + " > " + element.name;
  if (path.ends_with(" > " + std::string(name))) return &element;
  for (const AccessibleElement& child : element.children)
    if (const auto* const found = findNamed(child, path, name)) return found;
  return nullptr;
}

}  // namespace

AccessibleElement SimScreenReader::everything() const {
  AccessibleElement all;
  for (SimPanel* const panel : panels_.all())
    if (panel->isVisible() && panel->simHost().view() != nullptr)
      all.children.push_back(panel->simHost().view()->accessibleElement());
  return all;
}

void SimScreenReader::start() {
  told_ = everything();
  listening_ = panels_.onAccessibleChange([this] { listen(); });
}

void SimScreenReader::listen() {
  AccessibleElement now = everything();
  for (const AccessibleChange& change : accessibleChanges(told_, now)) heard_.push_back(line(change));
  told_ = std::move(now);
}

std::vector<std::string> SimScreenReader::heard() {
  return std::exchange(heard_, {});
}

std::vector<std::string> SimScreenReader::reads() const {
  std::vector<std::string> lines;
  for (const AccessibleElement& panel : everything().children) collect(panel, lines);
  return lines;
}

std::vector<std::string> SimScreenReader::reads(std::string_view in) const {
  std::vector<std::string> lines;
  for (const AccessibleElement& child : element(in).children) collect(child, lines);
  return lines;
}

SimScreenReader::Found SimScreenReader::find(std::string_view name) const {
  for (SimPanel* const panel : panels_.all()) {
    if (!panel->isVisible() || panel->simHost().view() == nullptr) continue;
    const AccessibleElement whole = panel->simHost().view()->accessibleElement();
    if (const auto* const found = findNamed(whole, "", name)) return {panel, *found};
  }
  return {};
}

bool SimScreenReader::finds(std::string_view name) const {
  return find(name).panel != nullptr;
}

AccessibleElement SimScreenReader::element(std::string_view name) const {
  auto found = find(name);
  if (found.panel != nullptr) return std::move(found.element);
  std::string message = "not told by any panel: " + std::string(name) + "; there is:";
  for (const auto& each : reads()) message += " [" + each + "]";
  throw std::runtime_error(message);
}

void SimScreenReader::perform(AccessibleAction action, std::string_view name) {
  const std::string id = element(name).id;
  SimPanel* const panel = find(name).panel;
  bool done = false;
  loop_.post([this, panel, action, id, &done] {
    if (!panels_.contains(panel) || !panel->isVisible() || panels_.inModalSession()) return;
    const auto whole = panel->simHost().view()->accessibleElement();
    const auto* const target = whole.find(id);
    if (target == nullptr) return;
    const ScreenRect place = *panel->simHost().toScreen(target->frame);
    monitors_.pressedHere({panel, {place.midX(), place.midY()}});
    // A monitor may have put the panel away.
    if (panels_.contains(panel) && panel->isVisible()) done = panel->simHost().view()->perform(action, id);
  });
  loop_.runUntilIdle();
  if (!done) throw std::runtime_error("nothing comes of it: " + std::string(name));
}

}  // namespace pellar
