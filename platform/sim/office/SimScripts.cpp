#include "platform/sim/office/SimScripts.h"

#include "core/Utf8.h"
#include "platform/sim/office/OfficeScript.h"
#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

using Kind = OfficeScript::Kind;

std::string_view newDocumentName(OfficeApp app) {
  switch (app) {
    case OfficeApp::word:
      return "Document";
    case OfficeApp::excel:
      return "Workbook";
    case OfficeApp::powerpoint:
      return "Presentation";
    case OfficeApp::outlook:
      break;
  }
  return "Untitled Message ";
}

// A script at work: a series of events that one process of its application answers. Whatever fails throws a
// ScriptError.
class ScriptAtWork {
 public:
  ScriptAtWork(SimOffice& office, const OfficeScript& script) : office_(office), script_(script) {
    const auto pid = office.process(script.app);
    if (!pid) throw ScriptError(ScriptError::applicationNotRunning, "Application isn’t running.");
    pid_ = *pid;
  }

  // What the script returns.
  std::optional<ScriptDescriptor> run() {
    switch (script_.kind) {
      case Kind::pathsByName:
        return pathsByName();
      case Kind::saveChanged:
      case Kind::saveAll:
        return save();
      case Kind::newDocument:
        create();
        return std::nullopt;
      case Kind::saveAs:
        return saveAs();
    }
    return std::nullopt;
  }

 private:
  ScriptDescriptor pathsByName() {
    std::vector<ScriptDescriptor> lines;
    forEachDocumentWithAPath([&](const SimDocumentPointer& document) {
      std::string line;
      ask("get name", document, [&] { line = document->name + "\t"; });
      ask("get full name", document, [&] { line += document->path; });
      lines.push_back({line});
    });
    return {std::move(lines)};
  }

  ScriptDescriptor save() {
    std::int32_t count = 0;
    forEachDocumentWithAPath([&](const SimDocumentPointer& document) {
      bool saved = false;
      if (script_.kind == Kind::saveChanged) ask("get saved", document, [&] { saved = document->saved; });
      if (saved) return;
      ask("save", document, [&] { office_.save(pid_, *document); });
      ++count;
    });
    return {count};
  }

  void create() {
    office_.send(pid_, "activate", [&] { office_.activate(pid_); });
    SimDocumentPointer created;
    const bool isMessage = script_.app == OfficeApp::outlook;
    office_.send(pid_, "make", [&] {
      created = office_.create(pid_, std::string(newDocumentName(script_.app)));
      if (!isMessage) office_.showInWindow(pid_, created);
    });
    if (isMessage) ask("open", created, [&] { office_.showInWindow(pid_, created); });
  }

  ScriptDescriptor saveAs() {
    SimDocumentPointer found;
    office_.send(pid_, "get first document whose name", [&] {
      for (const auto& document : office_.documents(pid_)) {
        touch(document);
        // Texts are compared without regard to case.
        if (Utf8::folded(document->name) != Utf8::folded(script_.documentName)) continue;
        found = document;
        return;
      }
      throw ScriptError(ScriptError::noSuchObject,
                        "Can’t get document 1 whose name = \"" + script_.documentName + "\".");
    });
    ask("save as", found, [&] { office_.saveAs(pid_, *found, script_.newPath); });
    return {"ok"};
  }

  // An error ends the work on its document alone.
  void forEachDocumentWithAPath(const std::function<void(const SimDocumentPointer&)>& work) {
    std::vector<SimDocumentPointer> all;
    office_.send(pid_, "get every document", [&] { all = office_.documents(pid_); });
    for (const auto& document : all) {
      try {
        bool hasPath = false;
        ask("get path", document, [&] { hasPath = !document->path.empty(); });
        if (hasPath) work(document);
      } catch (const ScriptError&) {
        continue;
      }
    }
  }

  void ask(const std::string& event, const SimDocumentPointer& document,
           const std::function<void()>& handle) {
    office_.send(pid_, event, [&] {
      touch(document);
      handle();
    });
  }

  void touch(const SimDocumentPointer& document) const {
    if (!office_.isOpen(pid_, document))
      throw ScriptError(ScriptError::noSuchObject, "Can’t get the document.");
    if (document->raises) throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
  }

  SimOffice& office_;
  const OfficeScript& script_;
  ProcessId pid_ = 0;
};

}  // namespace

ScriptResult SimScripts::run(const std::string& source) {
  sources_.push_back(source);
  return answer ? answer(source) : interpret(source);
}

ScriptResult SimScripts::interpret(const std::string& source) {
  const auto failed = [](int number, const std::string& message) {
    return ScriptResult{std::nullopt, ScriptError(number, message).description()};
  };
  const auto script = OfficeScript::of(source);
  if (!script) return failed(ScriptError::syntax, "Expected end of line but found unknown token.");
  try {
    return {ScriptAtWork(office_, *script).run(), std::nullopt};
  } catch (const ScriptError& error) {
    return failed(error.number(), std::string(scriptName(script->app)) + " got an error: " + error.what());
  }
}

}  // namespace pellar
