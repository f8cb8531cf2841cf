#include "app/strip/search/RecentSearch.h"

#include <chrono>
#include <utility>

#include "core/Weakly.h"

namespace pellar {

using namespace std::chrono_literals;

std::shared_ptr<RecentSearch> RecentSearch::create(const Platform& platform,
                                                   std::shared_ptr<StateStore> store, Panel& strip,
                                                   TabStripView& view,
                                                   std::shared_ptr<const TrackedPicture> picture) {
  std::shared_ptr<RecentSearch> search(
      new RecentSearch(platform, std::move(store), strip, view, std::move(picture)));
  search->connect();
  return search;
}

RecentSearch::RecentSearch(const Platform& platform, std::shared_ptr<StateStore> store, Panel& strip,
                           TabStripView& view, std::shared_ptr<const TrackedPicture> picture)
    : loop_(platform.mainLoop),
      eventMonitors_(platform.eventMonitors),
      workspace_(platform.workspace),
      strip_(strip),
      view_(view),
      picture_(std::move(picture)),
      dropdown_(platform, std::move(store), strip, view) {}

void RecentSearch::connect() {
  // Each callback keeps the search alive while it runs, and does nothing once the search is gone.
  const auto weakly = [this](auto action) { return pellar::weakly(weak_from_this(), action); };
  using Self = RecentSearch;

  resignedKey_ = strip_.onDidResignKey(weakly([](Self& self) { self.end(SearchEnd::keyboardLost); }));
  dropdown_.recentView().onChosen = weakly([](Self& self) { self.end(SearchEnd::chosen); });
  dropdown_.recentView().onEscape = weakly([](Self& self) { self.end(SearchEnd::escaped); });
  SearchField& field = view_.searchField();
  field.setOnActivate(weakly([](Self& self) { self.open(); }));
  field.setOnChange(weakly([](Self& self) { self.textChanged(); }));
  field.setOnCommand([weak = weak_from_this()](const std::string& selector) {
    const auto self = weak.lock();
    return self && self->dropdown_.recentView().handle(selector);
  });
}

void RecentSearch::open() {
  if (!strip_.isVisible()) return;
  dropdown_.list(picture_->app);
  if (!open_) {
    open_ = true;
    foldAfterClick_.cancel();
    // A tab that comes meanwhile must not fold the field away from under what is typed.
    view_.setSearchExpanded(true);
    dropdown_.show();
    watchClicks();
  }
  strip_.makeKeyAndOrderFront();
  view_.searchField().focus();
}

void RecentSearch::textChanged() {
  if (open_) {
    dropdown_.list(picture_->app);
  } else {
    open();
    // What came too late to open it must not wait for the next search.
    if (!open_) view_.searchField().setText("");
  }
}

void RecentSearch::watchClicks() {
  // A search that ends drops these monitors, and with them what they have captured.
  const auto elsewhere =
      weakly(weak_from_this(), [](RecentSearch& self) { self.end(SearchEnd::clickedElsewhere); });
  clickMonitors_.push_back(eventMonitors_.onGlobalMouseDown(elsewhere));
  clickMonitors_.push_back(eventMonitors_.onLocalMouseDown([this, elsewhere](const ObservedClick& click) {
    if (!isInside(click)) elsewhere();
  }));
}

bool RecentSearch::isInside(const ObservedClick& click) {
  if (dropdown_.is(click.panel)) return true;
  if (click.panel != &strip_) return false;
  return view_.searchField().frame().contains(strip_.host().fromScreen(click.location));
}

void RecentSearch::end(SearchEnd why) {
  if (!open_) return;
  // First, since giving up the keyboard below comes back here.
  open_ = false;
  clickMonitors_.clear();
  view_.searchField().setText("");
  if (why == SearchEnd::clickedElsewhere) {
    foldAfterClick();
  } else {
    view_.setSearchExpanded(false);
  }
  dropdown_.hide();
  strip_.clearFirstResponder();
  if (strip_.isKey()) strip_.resignKey();
  giveKeyboardBack();
}

void RecentSearch::foldAfterClick() {
  foldAfterClick_ = loop_.after(0ms, [this] { view_.setSearchExpanded(false); });
}

void RecentSearch::giveKeyboardBack() {
  const auto front = picture_->front;
  if (!front) return;
  const auto frontmost = workspace_.frontmostApplication();
  const bool userIsElsewhere =
      frontmost && frontmost->pid != front->pid && !isThisProgram(*frontmost, workspace_);
  if (!userIsElsewhere) workspace_.activate(front->pid);
}

void RecentSearch::followStrip() {
  if (open_) dropdown_.position();
}

}  // namespace pellar
