#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/panels/RecentView.h"
#include "app/strip/tabs/TabStripView.h"
#include "core/StateStore.h"
#include "core/TrackedApp.h"
#include "platform/EventMonitors.h"
#include "platform/MainLoop.h"
#include "platform/Panel.h"
#include "platform/Platform.h"
#include "platform/ScreenList.h"
#include "platform/Subscription.h"

namespace pellar {

// The panel of recently used files under the strip's search field: its place, and what it takes to open and
// close it. Main thread only.
class RecentDropdown {
 public:
  // What `platform` refers to, `strip` and `view`, which fills it, outlive the drop-down.
  RecentDropdown(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip,
                 TabStripView& view);
  ~RecentDropdown();
  RecentDropdown(const RecentDropdown&) = delete;
  RecentDropdown& operator=(const RecentDropdown&) = delete;

  // The user pressed a mouse button elsewhere while it was open.
  std::function<void()> onOutsideClick;

  [[nodiscard]] RecentView& recentView() { return recentView_; }
  [[nodiscard]] bool isOpen() const { return open_; }
  // Lists the files of `app`, or of every application, that fit the search text, shows the panel unless it is
  // open, and in every case lets the search field have the keyboard.
  void open(const std::optional<TrackedApp>& app);
  // The user changed the search text while it was open.
  void searchTextChanged();
  // Hides it, empties and folds the search field and gives the keyboard up. False when it was not open. After
  // a click elsewhere the field folds once that is delivered.
  bool close();
  // Puts it under the search field, inside the strip's screen.
  void position();

 private:
  void clickedOutside();
  [[nodiscard]] bool isInside(const ObservedClick& click);

  MainLoop& loop_;
  EventMonitors& eventMonitors_;
  ScreenList& screens_;
  Panel& strip_;
  TabStripView& view_;
  std::unique_ptr<Panel> panel_;
  RecentView recentView_;  // depends-on: panel_
  bool open_ = false;
  std::vector<Subscription> clickMonitors_;
  Subscription folding_;  // active from a click elsewhere until the field folds
};

}  // namespace pellar
