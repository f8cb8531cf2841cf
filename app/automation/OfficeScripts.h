#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/OfficeApp.h"

// The programs that the Office applications are sent, as text. Absent where the application has no script of
// that kind.
namespace pellar::OfficeScripts {

// The text as a string literal, quotes included.
[[nodiscard]] std::string quoted(std::string_view text);

// Returns a list of texts, each a document's name, a tab and its POSIX path. Never-saved documents are left
// out.
[[nodiscard]] std::optional<std::string> pathsByName(OfficeApp app);

// Saves the documents that have a file, with `onlyModified` just those with unsaved changes; returns how
// many.
[[nodiscard]] std::optional<std::string> saveAll(OfficeApp app, bool onlyModified);

// Brings the application forward with a new, empty document; in Outlook a new message.
[[nodiscard]] std::string newDocument(OfficeApp app);

// Saves the document of that name under another POSIX path; returns "ok".
[[nodiscard]] std::optional<std::string> saveAs(OfficeApp app, std::string_view documentName,
                                                std::string_view newPath);

}  // namespace pellar::OfficeScripts
