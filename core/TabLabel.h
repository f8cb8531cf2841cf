#pragma once

#include <optional>
#include <string>
#include <string_view>

// What a tab says and under which key its colour is kept. Pure functions, callable from any thread, linear in
// the length of their text; text that is not valid UTF-8 is read with U+FFFD in place of each bad byte.
namespace pellar::TabLabel {

// The file name of `path`, or when that is absent or empty the window's title without what its application
// appended; without a known Office extension in both cases.
std::string label(std::string_view title, const std::optional<std::string>& path);

// The path itself, byte for byte, or when that is absent or empty "title:" and the cleaned title.
std::string tagKey(std::string_view title, const std::optional<std::string>& path);

// The title without what its application appended: the document's name as the application writes it, with its
// extension where that is shown.
std::string documentName(std::string_view title);

// Whether a window of this title still says that it shows the file at `path`, which is not empty: its label
// is the file's, or the file's name stands in the title as a whole, with its extension or without. Letters
// may be composed in one and not in the other.
bool titleNames(std::string_view title, std::string_view path);

// The name without its extension when that is one of the Office extensions hidden in labels; else unchanged.
std::string stripExtension(std::string_view name);

}  // namespace pellar::TabLabel
