#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "app/automation/Automation.h"
#include "app/tracking/PathInTitle.h"
#include "app/tracking/WindowTracker.h"
#include "core/TrackedApp.h"
#include "platform/Platform.h"

namespace pellar {

// How a window's file is known.
enum class PathSource {
  answered,        // from an answer of its application, or as the window itself says
  guessedByLabel,  // several open documents would serve
};

struct DocumentPath {
  std::string path;  // absolute, POSIX
  PathSource source = PathSource::answered;
  friend bool operator==(const DocumentPath&, const DocumentPath&) = default;
};

// Which file is behind a window: the one place that knows. Other applications' windows say it themselves (the
// record's path); for the Office applications it is asked through scripts and kept here for each window, as
// long as its title goes on naming the file. A path that the title never named stays while the record lives.
// Scripts run nested loops: what is asked while any script is under way is answered from what is known. Made
// as a shared object. Main thread only.
class DocumentPaths : public std::enable_shared_from_this<DocumentPaths> {
 public:
  // What `platform` refers to outlives this.
  DocumentPaths(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                std::shared_ptr<Automation> automation);
  DocumentPaths(const DocumentPaths&) = delete;
  DocumentPaths& operator=(const DocumentPaths&) = delete;

  // What is known. Asks no application.
  [[nodiscard]] std::optional<DocumentPath> of(const OfficeWindow& window) const;
  // Whether that is a file, and no guess.
  [[nodiscard]] bool isSure(const OfficeWindow& window) const;
  // What is known, or when that is nothing or a guess, what the application answers now; the next picture
  // shows it. May wait.
  [[nodiscard]] std::optional<DocumentPath> ask(const std::shared_ptr<OfficeWindow>& window);
  // Asks anew, whatever is known; that stands when there is no answer.
  std::optional<DocumentPath> askAgain(const std::shared_ptr<OfficeWindow>& window);
  // Looks up the windows of the picture whose file is not known, together, each at most once in 30 seconds.
  // May wait. While a script is under way the tracker is to refresh after it instead.
  void askForUnknown(const TrackedApp& app, const WindowList& windows);

  // The window's document has another file now.
  void renamed(const std::shared_ptr<OfficeWindow>& window, const std::string& path);
  // This record stands for its window from now on: what its title shows to be out of date is forgotten.
  void adopt(const std::shared_ptr<OfficeWindow>& record);

 private:
  // What an Office application answered about a window.
  struct Answer {
    std::chrono::nanoseconds uptime{};  // when it came
    std::optional<DocumentPath> found = std::nullopt;
    std::weak_ptr<OfficeWindow> record = {};  // that stood for the window then
    PathInTitle inTitle = {};                 // of what was found
  };

  void askAfterScript();
  void keep(const std::shared_ptr<OfficeWindow>& window, const OpenDocuments& documents);
  void forgetOld();

  Platform platform_;
  std::shared_ptr<WindowTracker> tracker_;
  std::shared_ptr<Automation> automation_;
  std::unordered_map<Element, Answer, ElementHash> answers_;
  bool waits_ = false;  // for the end of a script
};

}  // namespace pellar
