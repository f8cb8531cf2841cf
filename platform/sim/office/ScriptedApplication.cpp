#include "platform/sim/office/ScriptedApplication.h"

#include <filesystem>
#include <utility>

#include "platform/sim/office/HfsPath.h"
#include "platform/sim/office/OfficeTerms.h"
#include "platform/sim/office/ScriptError.h"

namespace pellar {

namespace {

std::string nameOf(OfficeApp app) {
  return std::string(scriptName(app));
}

ProcessId runningProcess(const SimOffice& office, OfficeApp app) {
  if (const auto pid = office.process(app)) return *pid;
  throw ScriptError(ScriptError::applicationNotRunning,
                    nameOf(app) + " got an error: Application isn’t running.");
}

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

}  // namespace

ScriptedApplication::ScriptedApplication(SimOffice& office, OfficeApp app)
    : office_(office), app_(app), pid_(runningProcess(office, app)) {}

void ScriptedApplication::send(const std::string& event, const std::function<void()>& handle) {
  try {
    office_.send(pid_, event, handle);
  } catch (const ScriptError& error) {
    throw ScriptError(error.number(), nameOf(app_) + " got an error: " + error.what());
  }
}

SimDocumentPointer ScriptedApplication::documentOf(const ScriptValue& value) const {
  auto document = value.asDocument();
  if (!office_.isOpen(pid_, document))
    throw ScriptError(ScriptError::noSuchObject, "Can’t get the document.");
  if (document->raises) throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
  return document;
}

ScriptValue ScriptedApplication::read(std::string_view property, const ScriptValue& value) const {
  const auto document = documentOf(value);
  if (property == "name") return {document->name};
  if (property == "saved") return {document->saved};
  const bool everSaved = !document->path.empty();
  if (property == "full name") return {everSaved ? HfsPath::fromPosix(document->path) : document->name};
  const std::filesystem::path file(document->path);
  return {everSaved ? HfsPath::fromPosix(file.parent_path().string()) : std::string()};
}

ScriptValue ScriptedApplication::everyDocument() {
  ScriptValue::List all;
  send("get every document", [&] {
    for (auto& document : office_.documents(pid_)) all.push_back({std::move(document)});
  });
  return {std::move(all)};
}

ScriptValue ScriptedApplication::firstDocumentWhose(std::string_view property, const ScriptValue& value) {
  ScriptValue found;
  send("get first document whose " + std::string(property), [&] {
    for (auto& document : office_.documents(pid_)) {
      if (!read(property, {document}).is(value)) continue;
      found.value = std::move(document);
      return;
    }
    throw ScriptError(ScriptError::noSuchObject, "Can’t get document 1 whose " + std::string(property) +
                                                     " = \"" + value.asText() + "\".");
  });
  return found;
}

ScriptValue ScriptedApplication::property(std::string_view property, const ScriptValue& document) {
  ScriptValue value;
  send("get " + std::string(property), [&] { value = read(property, document); });
  return value;
}

void ScriptedApplication::activate() {
  send("activate", [&] { office_.activate(pid_); });
}

ScriptValue ScriptedApplication::makeDocument() {
  ScriptValue made;
  send("make", [&] {
    auto document = office_.create(pid_, std::string(newDocumentName(app_)));
    office_.showInWindow(pid_, document);
    made.value = std::move(document);
  });
  return made;
}

ScriptValue ScriptedApplication::makeMessage() {
  ScriptValue made;
  send("make", [&] { made.value = office_.create(pid_, std::string(newDocumentName(app_))); });
  return made;
}

void ScriptedApplication::openMessage(const ScriptValue& message) {
  send("open", [&] { office_.showInWindow(pid_, documentOf(message)); });
}

void ScriptedApplication::save(const ScriptValue& document) {
  send("save", [&] { office_.save(pid_, *documentOf(document)); });
}

void ScriptedApplication::saveAs(const ScriptValue& document, const std::string& posixPath) {
  send("save as", [&] { office_.saveAs(pid_, *documentOf(document), posixPath); });
}

}  // namespace pellar
