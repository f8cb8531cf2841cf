#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "app/strip/search/RecentDropdown.h"
#include "app/strip/tabs/TabStripView.h"
#include "app/strip/windows/TrackedPicture.h"
#include "core/StateStore.h"
#include "platform/EventMonitors.h"
#include "platform/MainLoop.h"
#include "platform/Panel.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"
#include "platform/Workspace.h"

namespace pellar {

// What ended a search.
enum class SearchEnd : std::uint8_t {
  chosen,            // the user opened a file of the list
  escaped,           // the user pressed Escape
  clickedElsewhere,  // the user pressed a mouse button elsewhere; the press is delivered afterwards
  keyboardLost,      // the strip's panel is no longer key
  windowChanged,     // the strip goes over to another window
  stripHidden        // the strip leaves the screen
};

// A search for a recently used file. It is closed, or open: the drop-down hangs under the search field, which
// is unfolded and has the keyboard until one of the ends above. A click or typing in the field opens it.
//
// Whatever ended it, the keyboard goes back to the window under the strip, unless the user has gone to
// another application by then.
//
// The field is folded as it closes. After a click elsewhere it is folded once the press is delivered:
// folding gives the tabs the field's room, and the press is to meet the tab that the user saw under the
// pointer. Main thread only.
class RecentSearch final : public std::enable_shared_from_this<RecentSearch> {
 public:
  // What `platform` refers to, `strip` and `view`, which fills it, outlive the search.
  static std::shared_ptr<RecentSearch> create(const Platform& platform, std::shared_ptr<StateStore> store,
                                              Panel& strip, TabStripView& view,
                                              std::shared_ptr<const TrackedPicture> picture);
  RecentSearch(const RecentSearch&) = delete;
  RecentSearch& operator=(const RecentSearch&) = delete;

  [[nodiscard]] bool isOpen() const { return open_; }
  // Lists the files anew, opens the search unless it is open, and in every case lets the field have the
  // keyboard. Nothing happens under a strip that is off the screen: what asked for it came too late.
  void open();
  // Nothing happens while it is closed.
  void end(SearchEnd why);
  // The strip was moved or resized.
  void followStrip();

 private:
  RecentSearch(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip, TabStripView& view,
               std::shared_ptr<const TrackedPicture> picture);
  void connect();
  void textChanged();
  void watchClicks();
  [[nodiscard]] bool isInside(const ObservedClick& click);
  void foldAfterClick();
  void giveKeyboardBack();

  MainLoop& loop_;
  EventMonitors& eventMonitors_;
  Workspace& workspace_;
  Panel& strip_;
  TabStripView& view_;
  std::shared_ptr<const TrackedPicture> picture_;
  RecentDropdown dropdown_;
  bool open_ = false;
  std::vector<Subscription> clickMonitors_;  // while it is open
  Subscription foldAfterClick_;              // of the field
  Subscription resignedKey_;
};

}  // namespace pellar
