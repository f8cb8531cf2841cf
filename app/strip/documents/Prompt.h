#pragma once

#include <optional>
#include <string>

#include "platform/Alerts.h"
#include "platform/Workspace.h"

// Modal questions for one line of text.
namespace pellar::Prompt {

// Brings this program to the front, asks, and gives the place in front back. The text without blanks at its
// ends; absent when the user cancelled or left nothing, and when no question can be shown. A nested loop runs
// until it is answered.
std::optional<std::string> ask(Alerts& alerts, Workspace& workspace, const std::string& title,
                               const std::string& message, const std::string& defaultValue);

}  // namespace pellar::Prompt
