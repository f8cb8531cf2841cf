#include "app/strip/documents/Prompt.h"

#include "core/Geometry.h"
#include "core/Utf8.h"

namespace pellar::Prompt {
namespace {

constexpr Size fieldSize{260, 24};

}  // namespace

std::optional<std::string> ask(Alerts& alerts, Workspace& workspace, const std::string& title,
                               const std::string& message, const std::string& defaultValue) {
  const auto before = workspace.frontmostApplication();
  // The strip never makes this program active, so the question would open behind the application's window.
  workspace.activateIgnoringOtherApps();
  const auto answer = alerts.runModal({.messageText = title,
                                       .informativeText = message,
                                       .buttons = {"OK", "Cancel"},
                                       .fieldSize = fieldSize,
                                       .fieldText = defaultValue});
  // A program without windows would keep the keyboard otherwise.
  const auto after = workspace.frontmostApplication();
  if (before && after && after->bundleId == workspace.ownBundleId()) workspace.activate(before->pid);

  if (!answer || answer->response != TextAlertAnswer::firstButtonReturn) return std::nullopt;
  const std::string text = Utf8::repaired(answer->fieldText);
  const auto trimmed = Utf8::trimmed(text);
  if (trimmed.empty()) return std::nullopt;
  return std::string(trimmed);
}

}  // namespace pellar::Prompt
