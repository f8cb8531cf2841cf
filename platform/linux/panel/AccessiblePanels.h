#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "platform/AccessibleElement.h"
#include "platform/MainLoop.h"

namespace pellar {

class AccessiblePart;
class AssistiveTechnology;
class AtSpiBridge;
class X11Panel;
struct AccessibleChange;

// The panels on the screen as the toolkit tells assistive technologies of them, beside its own windows. While
// none listens there is nothing of it, and nobody asks the panels. Main thread only.
class AccessiblePanels {
 public:
  using Panels = std::map<xcb_window_t, X11Panel*>;
  using Parts = std::vector<AccessiblePart*>;

  // `panels` outlive this. `onListening` is told whether changes are worth telling.
  AccessiblePanels(MainLoop& loop, const Panels& panels, std::function<void(bool)> onListening);
  ~AccessiblePanels();
  AccessiblePanels(const AccessiblePanels&) = delete;
  AccessiblePanels& operator=(const AccessiblePanels&) = delete;

  // What the panels tell may be something else now.
  void noteChange();

 private:
  void listen(bool listening);
  void update();
  void clear();
  void tell(const AccessibleChange& change);
  [[nodiscard]] AccessibleElement everything() const;
  [[nodiscard]] AccessiblePart* partOf(const std::vector<std::string>& path) const;
  [[nodiscard]] AccessiblePart* makePart(xcb_window_t window);

  MainLoop& loop_;
  const Panels& panels_;
  std::function<void(bool)> onListening_;
  bool listening_ = false;
  AccessibleElement told_;  // its children are the panels
  // Also the toolkit's, which asks for the parts of all panels.
  std::shared_ptr<Parts> parts_ = std::make_shared<Parts>();
  bool known_ = false;  // to the toolkit
  Subscription update_;
  std::unique_ptr<AtSpiBridge> bridge_;
  std::unique_ptr<AssistiveTechnology> technology_;  // where there is a session
};

}  // namespace pellar
