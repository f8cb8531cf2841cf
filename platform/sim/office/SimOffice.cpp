#include "platform/sim/office/SimOffice.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "core/PathParts.h"

namespace pellar {

namespace {

// Handles an event whose script was given up: no script is left to hear of a failure.
void handleUnheard(const std::function<void()>& handle) {
  try {
    handle();
  } catch (const ScriptError&) {
    return;
  }
}

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

ProcessId SimOffice::process(OfficeApp app) {
  if (const auto running = runningProcess(app)) return *running;
  ++launches_;
  return desktop_.launch(std::string(bundleID(app)), std::string(scriptName(app)), ActivationPolicy::regular)
      ->description.pid;
}

std::optional<ProcessId> SimOffice::runningProcess(OfficeApp app) const {
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
  // What happens may be told to happen no more.
  if (const auto happening = beforeEvent) happening(event);
  // The wait for a reply runs the loop, in which the program's own timers fire (usedhonda/cc-status-bar#13).
  if (const auto application = desktop_.application(pid)) loop_.advance(application->quirks.answerTime);
  // What others do meanwhile finds the main thread held up all the same.
  loop_.holdUp({}, [&] {
    if (const auto happening = whileWorking) happening(event);
  });
  try {
    awaitAnswer(pid);
  } catch (const ScriptError& error) {
    if (error.number() == ScriptError::timedOut) handleLate(pid, handle);
    throw;
  }
  handle();
  if (const auto happening = afterEvent) happening(event);
  awaitAnswer(pid);
}

void SimOffice::handleLate(ProcessId pid, const std::function<void()>& handle) {
  const auto application = desktop_.application(pid);
  if (!application) return;
  desktop_.whenResumed(*application, [handle] { handleUnheard(handle); });
}

void SimOffice::askUser(ProcessId pid, const ScriptError& refusal, std::function<void()> whenLate) {
  const auto question = std::make_shared<Question>();
  question_ = question;
  const auto gone = [this, pid] { return !desktop_.application(pid); };
  const bool inTime = loop_.runUntil([&] { return question->answer || gone(); }, eventTimeout);
  if (gone()) {
    question_ = nullptr;
    throw ScriptError(ScriptError::connectionInvalid, "Connection is invalid.");
  }
  if (!inTime) {
    question->whenLate = std::move(whenLate);
    throw ScriptError(ScriptError::timedOut, "AppleEvent timed out.");
  }
  if (!*question->answer) throw refusal;
}

void SimOffice::answer(bool yes) {
  const auto question = std::exchange(question_, nullptr);
  if (!question) throw std::logic_error("the application asks nothing");
  question->answer = yes;
  if (yes && question->whenLate) handleUnheard(question->whenLate);
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

void SimOffice::saveAs(ProcessId pid, const SimDocumentPointer& document, const std::string& path) {
  if (!isBelowHome(path)) failHandling();
  const auto late = [this, pid, document, path] {
    if (isOpen(pid, document)) storeAs(pid, *document, path);
  };
  if (asksForAccess) askUser(pid, {ScriptError::parameter, "Parameter error."}, late);
  if (asksBeforeReplacing && std::filesystem::exists(path))
    askUser(pid, {ScriptError::userCanceled, "User canceled."}, late);
  storeAs(pid, *document, path);
}

void SimOffice::storeAs(ProcessId pid, SimDocument& document, const std::string& path) {
  write(pid, document, path);
  document.path = path;
  document.name = lastComponent(path);
  document.saved = true;
  ++document.saves;
  if (document.window) document.window->retitle(document.name);
}

// Where it does not ask, a script's save replaces a file like the real applications.
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
