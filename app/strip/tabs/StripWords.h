#pragma once

#include <string_view>

#include "app/strip/tabs/StripAction.h"

// What the strip's tools and the hover card's buttons are called where a sign stands on them: the words of
// the menus that have the same actions.
namespace pellar::StripWords {

[[nodiscard]] std::string_view name(StripAction action);
// One sentence, without a full stop, on what a press does.
[[nodiscard]] std::string_view help(StripAction action);

}  // namespace pellar::StripWords
