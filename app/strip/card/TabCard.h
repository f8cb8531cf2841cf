#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/panels/CloseDelay.h"
#include "app/strip/card/TabCardView.h"
#include "platform/MainLoop.h"
#include "platform/Panel.h"
#include "platform/ScreenList.h"

namespace pellar {

// The card that comes up under a tab on which the pointer rests. Main thread only.
class TabCard {
 public:
  // What it is given by reference outlives the card. `onAction` is called when one of its buttons is pressed;
  // it may do away with the card.
  TabCard(PanelFactory& panels, MainLoop& loop, const ScreenList& screens,
          TabCardView::ActionHandler onAction);
  ~TabCard();
  TabCard(const TabCard&) = delete;
  TabCard& operator=(const TabCard&) = delete;

  // The pointer came to a tab, which lies at `under` on the screen: its card is shown in a moment. Until then
  // a card that is shown stays what it is. The subtitle is the file's folder, absent when no file is known.
  void show(WindowId id, const std::string& title, const std::optional<std::string>& subtitle,
            const ScreenRect& under);
  // The pointer is on no tab: the card goes in a moment, unless the pointer enters it.
  void scheduleClose();
  void hide();
  // The card of a tab that is gone goes at once, and does not come if it has yet to.
  void keepOnly(const std::function<bool(WindowId)>& exists);

 private:
  void putAway();
  void present(WindowId id, const std::string& title, const std::optional<std::string>& subtitle,
               const ScreenRect& under);

  MainLoop& loop_;
  const ScreenList& screens_;
  std::unique_ptr<Panel> panel_;
  TabCardView view_;  // depends-on: panel_
  CloseDelay closing_;
  std::optional<WindowId> shown_;  // the tab whose card is on the screen
  WindowId awaited_ = 0;           // the tab whose card the timer brings, while it runs
  Subscription showTimer_;
};

}  // namespace pellar
