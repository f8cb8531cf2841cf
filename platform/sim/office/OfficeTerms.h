#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "core/OfficeApp.h"

// The words that an Office application adds to the language inside its `tell` block: only those the program
// sends. A term may be several words.
namespace pellar::OfficeTerms {

using Term = std::vector<std::string_view>;

// Saving under another name: the command, the document, the word before the path.
struct SaveAs {
  Term command;
  Term label;
};

// The application that a script calls by this name.
[[nodiscard]] std::optional<OfficeApp> applicationNamed(std::string_view name);
// The class that can be counted with `every`, filtered with `first`, and made; none in Outlook.
[[nodiscard]] Term documentClass(OfficeApp app);
// The class that only can be made and opened; none but in Outlook.
[[nodiscard]] Term messageClass(OfficeApp app);
// Properties of a document.
[[nodiscard]] const std::vector<Term>& properties(OfficeApp app);
// Empty terms in Outlook.
[[nodiscard]] const SaveAs& saveAs(OfficeApp app);

}  // namespace pellar::OfficeTerms
