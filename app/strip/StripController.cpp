#include "app/strip/StripController.h"

#include <algorithm>
#include <utility>

#include "app/strip/place/StripGeometry.h"
#include "app/strip/tabs/TagColors.h"
#include "core/AppState.h"
#include "core/Notify.h"
#include "core/TabLabel.h"
#include "core/Tile.h"
#include "core/Weakly.h"
#include "platform/Workspace.h"

namespace pellar {
namespace {

constexpr Size initialSize{400, StripGeometry::stripHeight};

Color opaque(const RGB& rgb) {
  return {rgb.red, rgb.green, rgb.blue, 1, std::nullopt};
}

}  // namespace

std::shared_ptr<StripController> StripController::create(std::shared_ptr<WindowTracker> tracker,
                                                         std::shared_ptr<StateStore> store,
                                                         std::shared_ptr<DocumentPaths> paths,
                                                         std::shared_ptr<Automation> automation,
                                                         const std::shared_ptr<PlaceInFront>& place,
                                                         const Platform& platform) {
  std::shared_ptr<StripController> controller(new StripController(
      std::move(tracker), std::move(store), std::move(paths), std::move(automation), place, platform));
  controller->connect();
  return controller;
}

StripController::StripController(std::shared_ptr<WindowTracker> tracker, std::shared_ptr<StateStore> store,
                                 std::shared_ptr<DocumentPaths> paths, std::shared_ptr<Automation> automation,
                                 const std::shared_ptr<PlaceInFront>& place, const Platform& platform)
    : tracker_(std::move(tracker)),
      store_(std::move(store)),
      platform_(platform),
      panel_(platform.panels.makePanel(
          {.contentSize = initialSize, .canBecomeKey = true, .stationary = true, .ignoresCycle = true})),
      view_(std::make_unique<TabStripView>(panel_->host())),
      search_(RecentSearch::create(platform, store_, *panel_, *view_, picture_)),
      actions_(std::make_shared<WindowActions>(platform_, tracker_, picture_)),
      paths_(std::move(paths)),
      documents_(std::make_shared<StripDocuments>(platform_, tracker_, store_, paths_, std::move(automation),
                                                  place, picture_, actions_)),
      menus_(StripMenus::create(platform_, store_, picture_, actions_, paths_, documents_)),
      hoverPanels_(platform_, picture_, actions_, paths_),
      springLoading_(platform_.mainLoop),
      pushDown_(platform_, tracker_) {
  panel_->setView(view_.get());
}

StripController::~StripController() {
  panel_->setView(nullptr);
}

void StripController::connect() {
  // Each callback keeps the controller alive while it runs, and does nothing once the controller is gone.
  const auto weakly = [this](auto action) { return pellar::weakly(weak_from_this(), action); };
  using Self = StripController;

  view_->onSelect = weakly([](Self& self, WindowId id) { self.selectTab(id); });
  view_->onClose = weakly([](Self& self, WindowId id) {
    if (const auto target = self.picture_->window(id)) self.actions_->close(*target);
  });
  view_->onMenu = weakly([](Self& self, WindowId id, const MouseEvent& event) {
    const auto pause = self.hoverPanels_.pause();
    self.menus_->showTabMenu(id, event);
  });
  view_->onAction =
      weakly([](Self& self, StripAction action, const MouseEvent& event) { self.perform(action, event); });
  view_->onReorder = weakly([](Self& self, WindowId id, int index) { self.tracker_->move(id, index); });
  view_->onDrag = weakly([](Self& self, ScreenPoint offset) { self.dragGroup(offset); });
  view_->onDragEnd = weakly([](Self& self) { self.endDrag(); });
  view_->onTabHover = weakly([](Self& self, std::optional<WindowId> id, std::optional<ScreenRect> tab) {
    self.hoverPanels_.tabHovered(id, tab);
  });
  springLoading_.onOpen = weakly([](Self& self, WindowId id) { self.selectTab(id); });
  view_->onDraggedOver =
      weakly([](Self& self, std::optional<WindowId> id) { self.springLoading_.draggedOver(id); });
  view_->onZoomHover =
      weakly([](Self& self, std::optional<ScreenRect> tool) { self.hoverPanels_.zoomHovered(tool); });

  menus_->onAutoSave = weakly([](Self& self) { notify(self.autoSaveToggled); });

  screensChanged_ = platform_.screens.onChanged(weakly([](Self& self) { self.tracker_->scheduleRefresh(); }));

  tracker_->delegate = weak_from_this();
}

// --- the tracker's picture ---

void StripController::tracker(WindowTracker&, const std::optional<TrackedApp>& app, const WindowList& windows,
                              const std::shared_ptr<OfficeWindow>& front) {
  if (!app && ownApplicationIsFrontmost()) return;
  tickets_.draw().inTurn(
      [&] {
        if (front && picture_->front && picture_->front->id() != front->id())
          search_->end(SearchEnd::windowChanged);
      },
      [&] {
        *picture_ = {app, windows, front};
        actions_->pictureChanged();
        hoverPanels_.pictureChanged();
        if (mustHide()) hide();
      },
      [&] { documents_->resolvePathsIfNeeded(*app, windows); }, [&] { makeRoom(); },
      // Asked again: the steps before may have taken long.
      [&] { mustHide() ? hide() : show(); },
      // The strip first: a disk may take its time.
      [&] { documents_->enterRecentFiles(*app, windows); });
}

// The user works in the strip itself. Also when neither program has an identifier to tell.
bool StripController::ownApplicationIsFrontmost() const {
  const auto frontmost = platform_.workspace.frontmostApplication();
  return (frontmost ? frontmost->bundleId : std::nullopt) == platform_.workspace.ownBundleId();
}

bool StripController::mustHide() const {
  const auto& front = picture_->front;
  return locked || !picture_->app || !front || front->minimized || front->fullscreen ||
         !(front->frame.width > 0);
}

void StripController::hide() {
  // As good as a newer picture to what is still busy with one.
  const auto ticket = tickets_.draw();
  // The release may not reach a panel that is off the screen, and while a drag is on no window makes room.
  view_->abandonPress();
  hoverPanels_.hide();
  springLoading_.draggedOver(std::nullopt);
  ticket.inTurn([&] { search_->end(SearchEnd::stripHidden); },
                [&] {
                  panel_->orderOut();
                  notify(canCycleMayHaveChanged);
                });
}

void StripController::show() {
  view_->setAccent(opaque(picture_->app->accentRGB()));
  view_->setOfficeTools(true);
  view_->setRenameTool(picture_->app->office.has_value());
  view_->setAutoSaveOn(store_->state().settings.autoSaves());
  view_->setTabs(tabItems());
  panel_->setFrame(StripGeometry::stripFrame(picture_->front->frame, platform_.screens.screens()), true);
  panel_->orderAbove(picture_->front->element);
  notify(canCycleMayHaveChanged);
  search_->followStrip();
}

std::vector<TabItem> StripController::tabItems() const {
  const AppState& state = store_->state();
  const auto tagOf = [&](const OfficeWindow& each,
                         const std::optional<std::string>& path) -> std::optional<Color> {
    if (state.tags.empty()) return std::nullopt;
    const auto tag = state.tag(TabLabel::tagKey(each.title, path));
    return tag ? std::optional(shownColor(*tag)) : std::nullopt;
  };
  std::vector<TabItem> items;
  items.reserve(picture_->windows.size());
  for (const auto& each : picture_->windows) {
    const bool active = each == picture_->front;
    const auto known = paths_->of(*each);
    const auto path = known ? std::optional(known->path) : std::nullopt;
    items.push_back({each->id(), TabLabel::label(each->title, path), tagOf(*each, path), active});
  }
  return items;
}

void StripController::makeRoom() {
  // A window that the user drags by the strip would lose height with every report on its way along the top of
  // the screen. The report after the drag makes room.
  if (drag_.active()) return;
  // The window may go, and the next picture come, inside a write.
  const auto front = picture_->front;
  pushDown_.ifNeeded(*front);
}

// --- gestures ---

void StripController::perform(StripAction action, const MouseEvent& event) {
  if (!picture_->app) return;
  const auto front = picture_->front;
  switch (action) {
    case StripAction::search:
      search_->open();
      break;
    case StripAction::more: {
      const auto pause = hoverPanels_.pause();
      menus_->showMoreMenu(event);
      break;
    }
    case StripAction::rename: {
      const auto pause = hoverPanels_.pause();
      if (front) documents_->rename(actions_->windows().remember(front));
      break;
    }
    case StripAction::autoSave:
      notify(autoSaveToggled);
      break;
    case StripAction::saveAll:
      documents_->saveAll();
      break;
    case StripAction::closeAll:
      actions_->close(WindowList(picture_->windows));
      break;
    case StripAction::groups: {
      const auto pause = hoverPanels_.pause();
      menus_->showGroupsMenu(event);
      break;
    }
    case StripAction::newDoc:
      documents_->newDocument();
      break;
    case StripAction::minimize:
      if (front) actions_->minimize(*front);
      break;
    case StripAction::zoom:
      if (front) actions_->zoom(*front);
      break;
    case StripAction::closeWindow:
      if (front) actions_->close(*front);
      break;
  }
}

void StripController::selectTab(WindowId id) {
  const auto target = picture_->window(id);
  if (!target) return;
  search_->end(SearchEnd::windowChanged);
  actions_->raise(*target);
}

void StripController::cycle(bool forward) {
  const auto windows = picture_->windows;
  const auto current = std::ranges::find(windows, picture_->front);
  if (current == windows.end()) return;
  const auto next =
      cycledIndex(static_cast<int>(current - windows.begin()), static_cast<int>(windows.size()), forward);
  actions_->raise(*windows[static_cast<std::size_t>(next)]);
}

void StripController::dragGroup(ScreenPoint offset) {
  if (!drag_.active()) {
    const auto& front = picture_->front;
    if (!front || front->minimized || front->fullscreen) return;
    drag_.begin(front, picture_->windows);
  }
  drag_.moveBy(platform_.accessibility, offset);
  // The drag may have ended meanwhile, as it does when the strip hides, or the strip have gone over to
  // another window.
  const auto dragged = drag_.front();
  if (!dragged || !picture_->front || picture_->front->id() != dragged->id()) return;
  panel_->setFrame(StripGeometry::stripFrame(dragged->frame, platform_.screens.screens()), true);
  search_->followStrip();
}

void StripController::endDrag() {
  drag_.end();
  tracker_->scheduleRefresh();
}

}  // namespace pellar
