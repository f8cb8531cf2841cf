#include "app/automation/OfficeScripts.h"

namespace pellar::OfficeScripts {

namespace {

std::string tell(OfficeApp app) {
  return "tell application " + quoted(scriptName(app)) + "\n";
}

// Runs `body`, lines of a try block, for every document that has a file and meets `condition`. A document
// that raises an error is passed over.
std::string forEachDocument(OfficeApp app, std::string_view noun, const std::string& condition,
                            const std::string& body) {
  return tell(app) + "    set theDocs to every " + std::string(noun) +
         "\n"
         "    repeat with d in theDocs\n"
         "        try\n"
         "            if (path of d as string) is not \"\"" +
         condition + " then\n" + body +
         "            end if\n"
         "        end try\n"
         "    end repeat\n"
         "end tell\n";
}

}  // namespace

std::string quoted(std::string_view text) {
  std::string literal = "\"";
  literal.reserve(text.size() + 2);
  for (const char letter : text) {
    if (letter == '\\' || letter == '"') literal += '\\';
    literal += letter;
  }
  return literal + '"';
}

std::optional<std::string> pathsByName(OfficeApp app) {
  const auto noun = docNoun(app);
  if (!noun) return std::nullopt;
  return "set sep to character id 9\n"
         "set acc to {}\n" +
         forEachDocument(app, *noun, "",
                         "                set end of acc to (name of d as string) & sep & "
                         "(POSIX path of (full name of d as string))\n") +
         "return acc";
}

std::optional<std::string> saveAll(OfficeApp app, bool onlyModified) {
  const auto noun = docNoun(app);
  if (!noun) return std::nullopt;
  return "set n to 0\n" +
         forEachDocument(app, *noun, onlyModified ? " and (saved of d) is false" : "",
                         "                save d\n"
                         "                set n to n + 1\n") +
         "return n";
}

std::string newDocument(OfficeApp app) {
  const auto noun = docNoun(app);
  const std::string creation = noun ? "make new " + std::string(*noun) : "open (make new outgoing message)";
  return tell(app) + "activate\n" + creation + "\nend tell";
}

std::optional<std::string> saveAs(OfficeApp app, std::string_view documentName, std::string_view newPath) {
  const auto noun = docNoun(app);
  if (!noun) return std::nullopt;
  std::string command;
  switch (app) {
    case OfficeApp::word:
      command = "save as d file name ";
      break;
    case OfficeApp::excel:
      command = "save workbook as d filename ";
      break;
    case OfficeApp::powerpoint:
      command = "save d in ";
      break;
    case OfficeApp::outlook:
      break;  // it has no documents
  }
  return tell(app) + "    set d to first " + std::string(*noun) + " whose name is " + quoted(documentName) +
         "\n    " + command + quoted(newPath) +
         "\n"
         "    return \"ok\"\n"
         "end tell";
}

}  // namespace pellar::OfficeScripts
