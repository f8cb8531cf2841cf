#pragma once

#include <map>
#include <string>

#include "core/Utf8.h"

namespace pellar {

// Values by the names that people give and by the paths of files. Names that read the same are one key,
// however a program or a file system spells them; the key keeps its first spelling.
template <class Value>
using NameMap = std::map<std::string, Value, Utf8::NameOrder>;

}  // namespace pellar
