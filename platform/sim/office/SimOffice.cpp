#include "platform/sim/office/SimOffice.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include "core/PathExtension.h"
#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

[[noreturn]] void failHandling() {
  throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
}

}  // namespace

SimDocumentPointer SimOffice::open(const SimApplication& application, SimDocument document) {
  if (document.name.empty()) document.name = lastComponent(document.path);
  if (isBelowHome(document.path)) {
    std::filesystem::create_directories(std::filesystem::path(document.path).parent_path());
    std::ofstream(document.path, std::ios::binary) << document.content;
  }
  auto opened = std::make_shared<SimDocument>(std::move(document));
  documents_[application.pid()].push_back(opened);
  return opened;
}

SimDocumentPointer SimOffice::openInWindow(const SimApplication& application, SimDocument document) {
  auto opened = open(application, std::move(document));
  showInWindow(application.pid(), opened);
  return opened;
}

void SimOffice::close(const SimDocumentPointer& document) {
  for (auto& [pid, open] : documents_) std::erase(open, document);
  if (document->window) document->window->close();
}

void SimOffice::edit(SimDocument& document, std::string content) {
  document.content = std::move(content);
  document.saved = false;
}

std::vector<SimDocumentPointer> SimOffice::documents(ProcessId pid) const {
  std::vector<SimDocumentPointer> open;
  const auto found = documents_.find(pid);
  if (found == documents_.end() || !desktop_.application(pid)) return open;
  std::copy_if(found->second.begin(), found->second.end(), std::back_inserter(open),
               [](const auto& document) { return !document->window || document->window->exists(); });
  return open;
}

std::optional<ProcessId> SimOffice::process(OfficeApp app) const {
  for (const auto& application : desktop_.frontToBack()) {
    if (application->description.bundleId == bundleID(app)) return application->description.pid;
  }
  return std::nullopt;
}

void SimOffice::awaitAnswer(ProcessId pid) {
  // Waiting for a reply runs the main loop.
  loop_.runUntilIdle();
  const auto gone = [this, pid] { return !desktop_.application(pid); };
  const auto application = desktop_.application(pid);
  if (application && application->quirks.hung) {
    const bool answered = loop_.runUntil([&] { return gone() || !application->quirks.hung; }, eventTimeout);
    if (!answered) throw ScriptError(ScriptError::timedOut, "AppleEvent timed out.");
  }
  if (gone()) throw ScriptError(ScriptError::connectionInvalid, "Connection is invalid.");
}

void SimOffice::send(ProcessId pid, const std::string& event, const std::function<void()>& handle) {
  events_.push_back(event);
  if (!allowsControl) throw ScriptError(ScriptError::notPermitted, "Not authorized to send Apple events.");
  if (beforeEvent) beforeEvent(event);
  awaitAnswer(pid);
  loop_.holdUp(desktop_.application(pid)->quirks.answerTime, [&] {
    if (whileWorking) whileWorking(event);
  });
  handle();
  if (afterEvent) afterEvent(event);
  awaitAnswer(pid);
}

SimDocumentPointer SimOffice::create(ProcessId pid, const std::string& name) {
  auto created = std::make_shared<SimDocument>();
  const auto number = documents_[pid].size() + 1;
  created->name = name + std::to_string(number);
  documents_[pid].push_back(created);
  return created;
}

void SimOffice::showInWindow(ProcessId pid, const SimDocumentPointer& document) {
  const auto state = desktop_.application(pid);
  if (state) document->window = SimApplication(desktop_, screens_, state).open(document->name);
}

bool SimOffice::isOpen(ProcessId pid, const SimDocumentPointer& document) const {
  const auto open = documents(pid);
  return std::find(open.begin(), open.end(), document) != open.end();
}

void SimOffice::save(ProcessId pid, SimDocument& document) {
  if (document.path.empty()) {
    ++saveDialogs_;
    throw ScriptError(ScriptError::userCanceled, "User canceled.");
  }
  if (isBelowHome(document.path)) write(pid, document, document.path);
  document.saved = true;
  ++document.saves;
}

void SimOffice::saveAs(ProcessId pid, SimDocument& document, const std::string& path) {
  if (!isBelowHome(path)) failHandling();
  write(pid, document, path);
  document.path = path;
  document.name = lastComponent(path);
  document.saved = true;
  ++document.saves;
  if (document.window) document.window->retitle(document.name);
}

// Like the real applications a script's save asks nobody before it replaces a file.
void SimOffice::write(ProcessId pid, const SimDocument& document, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  const std::string_view content = document.content;
  file << content.substr(0, content.size() / 2) << std::flush;
  if (duringWrite) duringWrite(path);
  if (!desktop_.application(pid)) throw ScriptError(ScriptError::connectionInvalid, "Connection is invalid.");
  file << content.substr(content.size() / 2) << std::flush;
  if (!file) failHandling();
}

bool SimOffice::isBelowHome(const std::filesystem::path& path) const {
  const auto relative = path.lexically_normal().lexically_relative(home_.lexically_normal());
  return !relative.empty() && *relative.begin() != ".." && *relative.begin() != ".";
}

}  // namespace pellar
