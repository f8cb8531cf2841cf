#pragma once

#include <optional>
#include <string>

#include "app/tracking/PlaceInFront.h"
#include "platform/Alerts.h"

// Modal questions for one line of text.
namespace pellar::Prompt {

// Asks, with this program in front meanwhile. The text without blanks at its ends; absent when the user
// cancelled or left nothing, and when no question can be shown. A nested loop runs until it is answered.
std::optional<std::string> ask(Alerts& alerts, PlaceInFront& place, const std::string& title,
                               const std::string& message, const std::string& defaultValue);

}  // namespace pellar::Prompt
