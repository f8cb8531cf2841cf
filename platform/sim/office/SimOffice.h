#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/OfficeApp.h"
#include "platform/sim/applications/SimApplication.h"
#include "platform/sim/applications/SimDesktop.h"
#include "platform/sim/applications/SimWindow.h"
#include "platform/sim/office/ScriptError.h"
#include "platform/sim/system/SimMainLoop.h"
#include "platform/sim/system/SimScreens.h"

namespace pellar {

// A document that is open in a simulated Office application.
struct SimDocument {
  std::string name = {};  // as the application calls it, extension included
  std::string path = {};  // POSIX, absolute; empty when it was never saved
  bool saved = true;      // there are no unsaved changes
  bool raises = false;    // any script that touches it fails
  std::string content = "as opened";
  int saves = 0;
  // Closes the document when it is closed, and is named after it.
  std::optional<SimWindow> window = std::nullopt;
};
using SimDocumentPointer = std::shared_ptr<SimDocument>;

// The documents of the simulated Office applications, and how these behave when a script addresses them.
// Files below the home folder are real; any others are only thought of, and nothing is ever written there.
class SimOffice {
 public:
  // How long a script waits for an application that does not answer.
  static constexpr std::chrono::seconds eventTimeout{120};

  SimOffice(SimDesktop& desktop, const SimScreens& screens, SimMainLoop& loop, std::filesystem::path home)
      : desktop_(desktop), screens_(screens), loop_(loop), home_(std::move(home)) {}

  // The user opens a document without a window. Its file is on the disk then. A document with a path and no
  // name is called after its file.
  SimDocumentPointer open(const SimApplication& application, SimDocument document);
  // The same in a window of its own.
  SimDocumentPointer openInWindow(const SimApplication& application, SimDocument document);
  // The user closes a document, or types into it.
  void close(const SimDocumentPointer& document);
  static void edit(SimDocument& document, std::string content);

  // The open documents in the order they were opened.
  [[nodiscard]] std::vector<SimDocumentPointer> documents(const SimApplication& application) const {
    return documents(application.pid());
  }
  [[nodiscard]] std::vector<SimDocumentPointer> documents(ProcessId pid) const;
  // Applications that were not running until a script started them.
  [[nodiscard]] int launches() const { return launches_; }
  // Panels that asked the user where to save. A script should never bring one about.
  [[nodiscard]] int saveDialogs() const { return saveDialogs_; }
  // What scripts did, an event each: "get every document", "get path", "save", ...
  [[nodiscard]] const std::vector<std::string>& events() const { return events_; }

  // Whether the user lets this program control other applications.
  bool allowsControl = true;
  // Before a document is saved under another name its application asks its user for access to the folder,
  // as sandboxed applications do (xlwings/xlwings#249), or whether the file there may be replaced
  // (xlwings/xlwings#957). The script waits for the answer; one that comes after its time-out counts still.
  bool asksForAccess = false;
  bool asksBeforeReplacing = false;
  [[nodiscard]] bool isAsking() const { return question_ != nullptr; }
  // The user answers in the application. Throws when there is no question.
  void answer(bool yes);

  // What happens just before and just after an event is handled. A ScriptError thrown makes the event fail.
  std::function<void(const std::string& event)> beforeEvent;
  std::function<void(const std::string& event)> afterEvent;
  // What others do while the application works on an event and this program's main thread is held up.
  std::function<void(const std::string& event)> whileWorking;
  // What happens when a file is half written. A ScriptError thrown makes the event fail.
  std::function<void(const std::string& path)> duringWrite;

  // For scripts.

  // The process of the application; one that is not running is started, as sending it anything does
  // (AppleScript Language Guide, "launch").
  ProcessId process(OfficeApp app);
  // Has a process handle an event: waits until it answers, which runs the main loop nested. Throws a
  // ScriptError when it fails. An event that is given up is handled still, once the process goes on
  // (AppleScript Language Guide, "with timeout": the command is not cancelled), so that `handle` refers to
  // nothing of its script's.
  void send(ProcessId pid, const std::string& event, const std::function<void()>& handle);
  // The rest is for handlers of events.
  void activate(ProcessId pid) { desktop_.activate(pid); }
  SimDocumentPointer create(ProcessId pid, const std::string& name);
  void showInWindow(ProcessId pid, const SimDocumentPointer& document);
  [[nodiscard]] bool isOpen(ProcessId pid, const SimDocumentPointer& document) const;
  void save(ProcessId pid, SimDocument& document);
  void saveAs(ProcessId pid, const SimDocumentPointer& document, const std::string& path);

 private:
  // A question before the user of an application, in the middle of an event.
  struct Question {
    std::optional<bool> answer = std::nullopt;
    std::function<void()> whenLate = {};  // what a yes brings about that came after the time-out
  };

  [[nodiscard]] std::optional<ProcessId> runningProcess(OfficeApp app) const;
  void awaitAnswer(ProcessId pid);
  void handleLate(ProcessId pid, const std::function<void()>& handle);
  // Waits until the user has said yes. Throws when the answer is no, or does not come in time.
  void askUser(ProcessId pid, const ScriptError& refusal, std::function<void()> whenLate);
  void storeAs(ProcessId pid, SimDocument& document, const std::string& path);
  void write(ProcessId pid, const SimDocument& document, const std::string& path);
  [[nodiscard]] bool isBelowHome(const std::filesystem::path& path) const;

  SimDesktop& desktop_;
  const SimScreens& screens_;
  SimMainLoop& loop_;
  std::filesystem::path home_;
  std::map<ProcessId, std::vector<SimDocumentPointer>> documents_;
  std::vector<std::string> events_;
  int saveDialogs_ = 0;
  int launches_ = 0;
  std::shared_ptr<Question> question_;  // null while there is none
};

}  // namespace pellar
