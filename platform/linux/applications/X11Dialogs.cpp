#include "platform/linux/applications/X11Dialogs.h"

namespace pellar {

const X11Window& X11Dialogs::leaderOf(const X11Window& window) const {
  // Dialogs of dialogs are few; windows that name one another in a ring are as many as one likes.
  constexpr int deepest = 8;
  const X11Window* leader = &window;
  for (int depth = 0; depth < deepest; ++depth) {
    if (leader->standard()) return *leader;
    const X11Window* next = leader->transientFor ? mirror_.find(*leader->transientFor) : nullptr;
    if (next == nullptr) return *leader;
    leader = next;
  }
  return window;
}

const X11Window* X11Dialogs::standardWindowOf(const X11Window& window,
                                              const std::vector<xcb_window_t>& windows) const {
  const X11Window& leader = leaderOf(window);
  if (leader.standard()) return &leader;
  if (!isOfWholeGroup(leader)) return nullptr;
  const X11Window* only = nullptr;
  for (const xcb_window_t id : windows) {
    const X11Window* each = mirror_.find(id);
    if (each == nullptr || !each->standard() || each->group != leader.group) continue;
    if (mirror_.isMinimized(*each) || !mirror_.isOnShownDesktop(*each)) continue;
    if (only != nullptr) return nullptr;
    only = each;
  }
  return only;
}

// One that names the root, or a window that is never shown or is gone, is of no other window of the group.
bool X11Dialogs::isOfWholeGroup(const X11Window& window) const {
  if (!window.group) return false;
  if (!window.transientFor) return window.kind == X11WindowKind::dialog;
  return mirror_.find(*window.transientFor) == nullptr;
}

}  // namespace pellar
