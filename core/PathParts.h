#pragma once

#include <string>
#include <string_view>

// The one notion of a path's parts.
namespace pellar {

// The last component, without slashes that follow it; "/" when the path is nothing but slashes.
std::string_view lastComponent(std::string_view path);

// The path without its last component and the slashes before it; "/" for what stands in the root, empty for a
// bare name.
std::string_view withoutLastComponent(std::string_view path);

// The text after the last dot of the last component. Empty when there is none in the Mac's sense: a leading
// dot alone and a trailing dot make none, nor does anything in a name that begins with two dots, nor a text
// with a space or a mark of direction in it, as of "Dr. Smith".
std::string_view pathExtension(std::string_view path);

// pathExtension() in lower case (ASCII).
std::string lowerPathExtension(std::string_view path);

// Whether file calls mean what the path says: they end it at its first zero byte, and would find another
// file.
bool isUsablePath(std::string_view path);

}  // namespace pellar
