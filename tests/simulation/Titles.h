#pragma once

#include <optional>
#include <string>
#include <string_view>

// How a window's title and file read on a tab, worked out for the judge of the random days alone.
namespace pellar::titles {

// The document's name in a title: without what an Office application adds, and without an Office extension.
[[nodiscard]] std::string plainName(std::string title);
// The name of a file on a tab: its last component without an Office extension.
[[nodiscard]] std::string nameOfFile(std::string_view path);
// The file that the URL of a document names; absent for anything but a file.
[[nodiscard]] std::optional<std::string> fileOf(const std::optional<std::string>& url);
// Under what a colour is remembered: the file, else the name in the title.
[[nodiscard]] std::string keyOf(const std::string& title, const std::optional<std::string>& file);

}  // namespace pellar::titles
