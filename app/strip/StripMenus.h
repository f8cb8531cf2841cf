#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/strip/documents/DocumentPaths.h"
#include "app/strip/documents/StripDocuments.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/strip/windows/WindowActions.h"
#include "core/StateStore.h"
#include "platform/Menu.h"
#include "platform/Platform.h"
#include "platform/View.h"

namespace pellar {

// The strip's pop-up menus: of a tab, of the "more" tool and of the groups. Built anew each time they are
// shown; an item holds no record of a window but a reference, and looks it up when it is chosen. Main thread
// only.
class StripMenus : public std::enable_shared_from_this<StripMenus> {
 public:
  // What `platform` refers to outlives this.
  static std::shared_ptr<StripMenus> create(const Platform& platform, std::shared_ptr<StateStore> store,
                                            std::shared_ptr<const TrackedPicture> picture,
                                            std::shared_ptr<WindowActions> actions,
                                            std::shared_ptr<DocumentPaths> paths,
                                            std::shared_ptr<StripDocuments> documents);
  StripMenus(const StripMenus&) = delete;
  StripMenus& operator=(const StripMenus&) = delete;

  // "Auto-save" was chosen.
  std::function<void()> onAutoSave;

  // Each returns when the menu is closed and what was chosen is done. Nothing is shown for a tab that is not
  // there. The menu of the "more" tool is that of an application, which the picture names.
  void showTabMenu(WindowId id, const MouseEvent& event);
  void showMoreMenu(const MouseEvent& event);
  void showGroupsMenu(const MouseEvent& event);

 private:
  StripMenus(const Platform& platform, std::shared_ptr<StateStore> store,
             std::shared_ptr<const TrackedPicture> picture, std::shared_ptr<WindowActions> actions,
             std::shared_ptr<DocumentPaths> paths, std::shared_ptr<StripDocuments> documents);

  template <class Action>
  [[nodiscard]] ClosureItem item(std::string title, Action action);
  [[nodiscard]] Menu closeItems(const WindowReference& window, const TrackedApp& app);
  [[nodiscard]] Menu fileItems(const WindowReference& window, const TrackedApp& app,
                               const std::optional<std::string>& path);
  [[nodiscard]] Menu tileMenu(const WindowReference& window);
  [[nodiscard]] Menu tagMenu(const WindowReference& window, const std::string& key);
  [[nodiscard]] Menu groupMenu(const std::string& name, std::size_t fileCount);
  // The windows that have a tab now in place of those seen, with those that came while the menu was open.
  [[nodiscard]] WindowList inPlaceOf(const std::vector<WindowReference>& seen);

  Platform platform_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<const TrackedPicture> picture_;
  std::shared_ptr<WindowActions> actions_;
  std::shared_ptr<DocumentPaths> paths_;
  std::shared_ptr<StripDocuments> documents_;
};

}  // namespace pellar
