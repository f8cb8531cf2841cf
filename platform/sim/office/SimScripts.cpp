#include "platform/sim/office/SimScripts.h"

#include <memory>
#include <utility>

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

// The POSIX path that AppleScript makes of a document's full name. An address in the cloud, which it takes
// for a path of the old kind, comes out with slashes and colons exchanged (xlwings/xlwings#1253).
std::string posixPath(const std::string& fullName) {
  if (!fullName.starts_with("https:")) return fullName;
  std::string mangled = "/";
  for (const char letter : fullName) mangled += letter == '/' ? ':' : letter == ':' ? '/' : letter;
  return mangled;
}

// A script at work: a series of events that one process of its application answers. Whatever fails throws a
// ScriptError. What the events are handled with is shared, since they may be handled when the script is given
// up.
class ScriptAtWork {
 public:
  ScriptAtWork(SimOffice& office, OfficeScript script)
      : office_(office), script_(std::move(script)), pid_(office.process(script_.app)) {}

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
      std::string name = ask<std::string>("get name", document, [document] { return document->name; });
      lines.push_back({std::move(name) + "\t" + ask<std::string>("get full name", document, [document] {
                         return posixPath(document->path);
                       })});
    });
    return {std::move(lines)};
  }

  ScriptDescriptor save() {
    std::int32_t count = 0;
    forEachDocumentWithAPath([&](const SimDocumentPointer& document) {
      if (script_.kind == Kind::saveChanged &&
          ask<bool>("get saved", document, [document] { return document->saved; }))
        return;
      tell("save", document, [document, &office = office_, pid = pid_] { office.save(pid, *document); });
      ++count;
    });
    return {count};
  }

  void create() {
    office_.send(pid_, "activate", [&office = office_, pid = pid_] { office.activate(pid); });
    const bool isMessage = script_.app == OfficeApp::outlook;
    const auto created =
        answerTo<SimDocumentPointer>("make", [&office = office_, pid = pid_, app = script_.app, isMessage] {
          auto document = office.create(pid, std::string(newDocumentName(app)));
          if (!isMessage) office.showInWindow(pid, document);
          return document;
        });
    if (isMessage) {
      tell("open", created, [&office = office_, pid = pid_, created] { office.showInWindow(pid, created); });
    }
  }

  ScriptDescriptor saveAs() {
    const auto found = answerTo<SimDocumentPointer>(
        "get first document whose name", [&office = office_, pid = pid_, name = script_.documentName] {
          for (const auto& document : office.documents(pid)) {
            touch(office, pid, document);
            // Texts are compared without regard to case.
            if (Utf8::folded(document->name) == Utf8::folded(name)) return document;
          }
          throw ScriptError(ScriptError::noSuchObject, "Can’t get document 1 whose name = \"" + name + "\".");
        });
    tell("save as", found,
         [&office = office_, pid = pid_, found, path = script_.newPath] { office.saveAs(pid, found, path); });
    return {"ok"};
  }

  // An error ends the work on its document alone.
  void forEachDocumentWithAPath(const std::function<void(const SimDocumentPointer&)>& work) {
    const auto all = answerTo<std::vector<SimDocumentPointer>>(
        "get every document", [&office = office_, pid = pid_] { return office.documents(pid); });
    for (const auto& document : all) {
      try {
        if (ask<bool>("get path", document, [document] { return !document->path.empty(); })) work(document);
      } catch (const ScriptError&) {
        continue;
      }
    }
  }

  template <class Answer, class Handler>
  Answer answerTo(const std::string& event, Handler handler) {
    const auto answer = std::make_shared<Answer>();
    office_.send(pid_, event, [answer, handler] { *answer = handler(); });
    return std::move(*answer);
  }
  // Events about one document.
  template <class Answer, class Handler>
  Answer ask(const std::string& event, const SimDocumentPointer& document, Handler handler) {
    return answerTo<Answer>(event, [&office = office_, pid = pid_, document, handler] {
      touch(office, pid, document);
      return handler();
    });
  }
  template <class Handler>
  void tell(const std::string& event, const SimDocumentPointer& document, Handler handler) {
    office_.send(pid_, event, [&office = office_, pid = pid_, document, handler] {
      touch(office, pid, document);
      handler();
    });
  }

  static void touch(const SimOffice& office, ProcessId pid, const SimDocumentPointer& document) {
    if (!office.isOpen(pid, document))
      throw ScriptError(ScriptError::noSuchObject, "Can’t get the document.");
    if (document->raises) throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
  }

  SimOffice& office_;
  OfficeScript script_;
  ProcessId pid_;
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
