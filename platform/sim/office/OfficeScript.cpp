#include "platform/sim/office/OfficeScript.h"

#include <array>
#include <cstddef>
#include <vector>

namespace pellar {

namespace {

// What a script for one application says in its holes. Written down here and not taken from the program,
// whose words these are to check.
struct Words {
  OfficeApp app;
  std::string_view name;
  std::string_view creation;
  std::string_view noun;  // empty in Outlook, which has a script for a new message alone
  std::string_view saveAs;
};
constexpr std::array<Words, 4> dictionary{
    {{OfficeApp::word, "Microsoft Word", "make new document", "document", "save as d file name"},
     {OfficeApp::excel, "Microsoft Excel", "make new workbook", "workbook", "save workbook as d filename"},
     {OfficeApp::powerpoint, "Microsoft PowerPoint", "make new presentation", "presentation", "save d in"},
     {OfficeApp::outlook, "Microsoft Outlook", "open (make new outgoing message)", {}, {}}}};

// Holes: % is the application's name, # its noun, ^ its words for saving elsewhere, * for a new document, and
// $ any text in quotes.
struct Template {
  OfficeScript::Kind kind;
  std::string_view text;
};
constexpr std::array<Template, 5> templates{{
    {OfficeScript::Kind::pathsByName, R"(set sep to character id 9
set acc to {}
tell application "%"
    set theDocs to every #
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                set end of acc to (name of d as string) & sep & (POSIX path of (full name of d as string))
            end if
        end try
    end repeat
end tell
return acc)"},
    {OfficeScript::Kind::saveChanged, R"(set n to 0
tell application "%"
    set theDocs to every #
    repeat with d in theDocs
        try
            if (path of d as string) is not "" and (saved of d) is false then
                save d
                set n to n + 1
            end if
        end try
    end repeat
end tell
return n)"},
    {OfficeScript::Kind::saveAll, R"(set n to 0
tell application "%"
    set theDocs to every #
    repeat with d in theDocs
        try
            if (path of d as string) is not "" then
                save d
                set n to n + 1
            end if
        end try
    end repeat
end tell
return n)"},
    {OfficeScript::Kind::newDocument, "tell application \"%\"\nactivate\n*\nend tell"},
    {OfficeScript::Kind::saveAs, R"(tell application "%"
    set d to first # whose name is $
    ^ $
    return "ok"
end tell)"},
}};

bool take(std::string_view& source, std::string_view word) {
  if (!source.starts_with(word)) return false;
  source.remove_prefix(word.size());
  return true;
}

// The text that a literal at the start of `source` means.
std::optional<std::string> takeLiteral(std::string_view& source) {
  static constexpr std::string_view letters = "\"\\nrt";
  static constexpr std::string_view meanings = "\"\\\n\r\t";
  if (!take(source, "\"")) return std::nullopt;
  std::string text;
  for (std::size_t at = 0; at < source.size(); ++at) {
    if (source[at] == '"') {
      source.remove_prefix(at + 1);
      return text;
    }
    if (source[at] != '\\') {
      text += source[at];
      continue;
    }
    const auto escape = ++at < source.size() ? letters.find(source[at]) : std::string_view::npos;
    if (escape == std::string_view::npos) return std::nullopt;
    text += meanings[escape];
  }
  return std::nullopt;
}

// The texts in the holes for them; absent when the source is another script.
std::optional<std::vector<std::string>> textsIn(std::string_view source, std::string_view text,
                                                const Words& words) {
  std::vector<std::string> texts;
  for (const char& letter : text) {
    if (letter == '$') {
      auto literal = takeLiteral(source);
      if (!literal) return std::nullopt;
      texts.push_back(std::move(*literal));
      continue;
    }
    const std::string_view word = letter == '%'   ? words.name
                                  : letter == '#' ? words.noun
                                  : letter == '^' ? words.saveAs
                                  : letter == '*' ? words.creation
                                                  : std::string_view(&letter, 1);
    if (word.empty() || !take(source, word)) return std::nullopt;
  }
  if (!source.empty()) return std::nullopt;
  return texts;
}

}  // namespace

std::optional<OfficeScript> OfficeScript::of(std::string_view source) {
  for (const Words& words : dictionary) {
    for (const Template& known : templates) {
      auto texts = textsIn(source, known.text, words);
      if (!texts) continue;
      texts->resize(2);
      return OfficeScript{known.kind, words.app, std::move(texts->front()), std::move(texts->back())};
    }
  }
  return std::nullopt;
}

}  // namespace pellar
