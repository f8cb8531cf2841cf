#include "app/strip/documents/DocumentPaths.h"

#include <utility>

#include "core/Weakly.h"
#include "platform/MainLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto recheckInterval = 30s;
// More answers are not kept beyond that time, since nothing tells which of their windows are gone.
constexpr std::size_t mostAnswersKept = 1000;

}  // namespace

DocumentPaths::DocumentPaths(const Platform& platform, std::shared_ptr<WindowTracker> tracker,
                             std::shared_ptr<Automation> automation)
    : platform_(platform), tracker_(std::move(tracker)), automation_(std::move(automation)) {}

std::optional<DocumentPath> DocumentPaths::of(const OfficeWindow& window) const {
  if (!window.app.office) return window.path ? std::optional(DocumentPath{*window.path}) : std::nullopt;
  const auto answer = answers_.find(window.element);
  return answer == answers_.end() ? std::nullopt : answer->second.found;
}

std::optional<DocumentPath> DocumentPaths::ask(const std::shared_ptr<OfficeWindow>& window) {
  return isSure(*window) ? of(*window) : askAgain(window);
}

bool DocumentPaths::isSure(const OfficeWindow& window) const {
  const auto known = of(window);
  return known && known->source != PathSource::guessedByLabel;
}

std::optional<DocumentPath> DocumentPaths::askAgain(const std::shared_ptr<OfficeWindow>& window) {
  const auto known = of(*window);
  if (!window->app.office || automation_->isBusy()) return known;
  const auto kept = window;  // what it is called with may be replaced while the application is asked
  const auto documents = automation_->openDocuments(*kept->app.office);
  keep(kept, documents);
  auto found = of(*kept);
  if (found != known) tracker_->scheduleRefresh();
  return found;
}

void DocumentPaths::askForUnknown(const TrackedApp& app, const WindowList& windows) {
  if (!app.office) return;
  if (automation_->isBusy()) return askAfterScript();
  const auto uptime = platform_.mainLoop.uptime();
  WindowList pending;
  for (const auto& each : windows) {
    const auto answer = answers_.find(each->element);
    if (answer == answers_.end() ||
        (!answer->second.found && uptime - answer->second.uptime > recheckInterval))
      pending.push_back(each);
  }
  if (pending.empty()) return;
  forgetOld();
  const auto documents = automation_->openDocuments(*app.office);
  for (const auto& each : pending) keep(each, documents);
}

void DocumentPaths::renamed(const std::shared_ptr<OfficeWindow>& window, const std::string& path) {
  answers_.insert_or_assign(
      window->element,
      Answer{.uptime = platform_.mainLoop.uptime(), .found = DocumentPath{path}, .record = window});
}

void DocumentPaths::adopt(const std::shared_ptr<OfficeWindow>& record) {
  const auto known = answers_.find(record->element);
  if (known == answers_.end()) return;
  Answer& answer = known->second;
  if (!answer.found) return;
  const bool isNew = answer.record.lock() != record;
  answer.inTitle.look(record->title, answer.found->path);
  if (answer.inTitle.isOutdated() || (isNew && !answer.inTitle.names())) answer.found.reset();
}

// A picture that comes meanwhile is shown without what will be known then, and asks when it comes again.
void DocumentPaths::askAfterScript() {
  if (std::exchange(waits_, true)) return;
  automation_->whenFree(weakly(weak_from_this(), [](DocumentPaths& self) {
    self.waits_ = false;
    self.tracker_->scheduleRefresh();
  }));
}

void DocumentPaths::keep(const std::shared_ptr<OfficeWindow>& window, const OpenDocuments& documents) {
  auto& answer = answers_.try_emplace(window->element).first->second;
  answer.uptime = platform_.mainLoop.uptime();
  // Without an answer what was known stands.
  if (documents.all().empty()) return;
  answer = {.uptime = answer.uptime, .record = window};
  const auto match = documents.match(window->title);
  if (!match) return;
  const auto source = match->isOnly ? PathSource::answered : PathSource::guessedByLabel;
  answer.found = DocumentPath{match->path, source};
  answer.inTitle.look(window->title, match->path);
}

void DocumentPaths::forgetOld() {
  if (answers_.size() <= mostAnswersKept) return;
  const auto uptime = platform_.mainLoop.uptime();
  std::erase_if(answers_, [&](const auto& each) { return uptime - each.second.uptime > recheckInterval; });
}

}  // namespace pellar
