#pragma once

#include <string_view>

namespace pellar::SemVer {

// Whether `candidate` is a strictly higher version than `current`. Dotted numbers compared from the left,
// missing ones and those that are no whole number counting as 0.
bool isNewer(std::string_view candidate, std::string_view current);

}  // namespace pellar::SemVer
