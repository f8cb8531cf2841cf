#pragma once

#include <memory>
#include <optional>

#include "app/panels/RecentView.h"
#include "app/strip/tabs/TabStripView.h"
#include "core/StateStore.h"
#include "core/TrackedApp.h"
#include "platform/Panel.h"
#include "platform/Platform.h"
#include "platform/ScreenList.h"

namespace pellar {

// The panel of recently used files under the strip's search field: what it lists and where it stands. Main
// thread only.
class RecentDropdown {
 public:
  // What `platform` refers to, `strip` and `view`, which fills it, outlive the drop-down.
  RecentDropdown(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip,
                 TabStripView& view);
  ~RecentDropdown();
  RecentDropdown(const RecentDropdown&) = delete;
  RecentDropdown& operator=(const RecentDropdown&) = delete;

  [[nodiscard]] RecentView& recentView() { return recentView_; }
  [[nodiscard]] bool is(const Panel* panel) const { return panel == panel_.get(); }

  // Lists the files of `app`, or of every application, that fit the search text.
  void list(const std::optional<TrackedApp>& app);
  // Shows it under the search field.
  void show();
  void hide();
  // Puts it under the search field, inside the strip's screen.
  void position();

 private:
  ScreenList& screens_;
  Panel& strip_;
  TabStripView& view_;
  std::unique_ptr<Panel> panel_;
  RecentView recentView_;  // depends-on: panel_
};

}  // namespace pellar
