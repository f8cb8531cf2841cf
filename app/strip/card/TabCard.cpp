#include "app/strip/card/TabCard.h"

#include <chrono>
#include <utility>

#include "app/strip/place/PanelPlace.h"
#include "app/strip/place/Screens.h"

namespace pellar {
namespace {

constexpr std::chrono::milliseconds showDelay{300};
constexpr double lowHeight = 58;
constexpr double tallHeight = 74;  // with a title of two lines
constexpr double gap = 4;          // between the tab and the card

}  // namespace

TabCard::TabCard(PanelFactory& panels, MainLoop& loop, const ScreenList& screens,
                 TabCardView::ActionHandler onAction)
    : loop_(loop),
      screens_(screens),
      panel_(panels.makePanel({.contentSize = {200, lowHeight}, .level = PanelLevel::popUpMenu})),
      view_(panel_->host(), std::move(onAction)),
      closing_(loop, [this] { hide(); }) {
  view_.onHoverChanged = [this](bool inside) { inside ? closing_.panelEntered() : closing_.panelLeft(); };
  view_.onChosen = [this] { hide(); };
  panel_->setView(&view_);
}

TabCard::~TabCard() {
  panel_->setView(nullptr);
}

void TabCard::show(WindowId id, const std::string& title, const std::optional<std::string>& subtitle,
                   const ScreenRect& under) {
  closing_.anchorEntered();
  awaited_ = id;
  showTimer_ = loop_.after(showDelay, [=, this] { present(id, title, subtitle, under); });
}

void TabCard::scheduleClose() {
  if (!shown_) return hide();
  showTimer_.cancel();
  closing_.anchorLeft();
}

void TabCard::hide() {
  showTimer_.cancel();
  putAway();
}

void TabCard::putAway() {
  shown_.reset();
  closing_.reset();
  panel_->orderOut();
}

void TabCard::keepOnly(const std::function<bool(WindowId)>& exists) {
  if (!exists(awaited_)) showTimer_.cancel();
  if (shown_ && !exists(*shown_)) putAway();
}

void TabCard::present(WindowId id, const std::string& title, const std::optional<std::string>& subtitle,
                      const ScreenRect& under) {
  const auto screen = Screens::containing(under, screens_);
  if (!screen) return;
  shown_ = id;
  view_.set(id, title, subtitle);
  const double width = view_.preferredWidth();
  const double height = view_.titleNeedsTwoLines() ? tallHeight : lowHeight;
  const ScreenRect& visible = screen->visibleFrame;
  const ScreenPoint topLeft{PanelPlace::left(under.minX(), width, visible),
                            PanelPlace::top(under.minY() - gap, visible)};
  panel_->setFrame(PanelPlace::hanging(topLeft, {width, height}), true);
  panel_->orderFrontRegardless();
}

}  // namespace pellar
