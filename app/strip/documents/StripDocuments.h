#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "app/automation/Automation.h"
#include "app/strip/documents/DocumentPaths.h"
#include "app/strip/windows/TrackedPicture.h"
#include "app/strip/windows/WindowActions.h"
#include "app/tracking/PlaceInFront.h"
#include "app/tracking/WindowTracker.h"
#include "core/AppState.h"
#include "core/StateStore.h"
#include "platform/Platform.h"

namespace pellar {

// The documents behind the strip's windows: what is remembered of them, and what the strip does to them.
// Scripts and questions run nested loops, in which windows come and go and the picture is replaced; what
// needs a script while another one is under way is done after that. Every change of what is remembered is
// saved at once. Made as a shared object. Main thread only.
class StripDocuments : public std::enable_shared_from_this<StripDocuments> {
 public:
  // What `platform` refers to outlives this.
  StripDocuments(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                 std::shared_ptr<StateStore> store, std::shared_ptr<DocumentPaths> paths,
                 std::shared_ptr<Automation> automation, std::shared_ptr<PlaceInFront> place,
                 std::shared_ptr<const TrackedPicture> picture, std::shared_ptr<WindowActions> actions);

  // Learns the files behind the windows of a new picture. May wait for the application.
  void resolvePathsIfNeeded(const TrackedApp& app, const WindowList& windows);
  // Enters the documents of a picture that were not seen in this run into the recent files. Waits for the
  // disk.
  void enterRecentFiles(const TrackedApp& app, const WindowList& windows);

  // Asks for a new name and renames the document; its colour goes with it, also when the application saves
  // under that name only later. Nothing is asked without a path, or about a window that is gone.
  void rename(const WindowReference& window);
  void rename(WindowReference window, std::string path);
  // Saves the open documents of the strip's application: through a script where it is an Office application,
  // else window by window through its menu.
  void saveAll();
  void saveAll(OfficeApp app);
  // A new, empty document in the strip's application.
  void newDocument();
  void newDocument(OfficeApp app);

  // Sets or takes away the colour of a tag key, for a window that is still there.
  void setTag(const WindowReference& window, const std::string& key, std::optional<TagColor> color);

  // Asks for a name and remembers the windows' files under it; does not ask when there are none.
  void saveGroup(const WindowList& windows);
  // Opens each file of a group, or forgets the group; its files stay. Nothing happens without a group of that
  // name.
  void openGroup(const std::string& name);
  void deleteGroup(const std::string& name);

 private:
  // A rename that its application has not confirmed, and may do yet.
  struct OpenRename {
    Element window;
    std::string from;
    std::string to;
  };

  template <class Action>
  void whenFree(Action action);
  void finishRename(const WindowReference& window, const std::string& path, const std::string& newName);
  void closeRenames(const WindowList& windows);
  void moveTag(const std::string& from, const std::string& to);
  void askGroupName(const WindowList& windows);

  Platform platform_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<StateStore> store_;
  std::shared_ptr<DocumentPaths> paths_;
  std::shared_ptr<PlaceInFront> place_;
  std::shared_ptr<const TrackedPicture> picture_;
  std::shared_ptr<WindowActions> actions_;
  std::shared_ptr<Automation> automation_;
  std::unordered_set<std::string> recordedRecent_;
  std::vector<OpenRename> openRenames_;
};

}  // namespace pellar
