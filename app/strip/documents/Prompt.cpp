#include "app/strip/documents/Prompt.h"

#include "core/Geometry.h"
#include "core/Utf8.h"

namespace pellar::Prompt {
namespace {

constexpr Size fieldSize{260, 24};

}  // namespace

std::optional<std::string> ask(Alerts& alerts, PlaceInFront& place, const std::string& title,
                               const std::string& message, const std::string& defaultValue) {
  std::optional<TextAlertAnswer> answer;
  // The strip never makes this program active, so the question would open behind the application's window.
  place.during([&] {
    answer = alerts.runModal({.messageText = title,
                              .informativeText = message,
                              .buttons = {"OK", "Cancel"},
                              .fieldSize = fieldSize,
                              .fieldText = defaultValue});
  });

  if (!answer || answer->response != TextAlertAnswer::firstButtonReturn) return std::nullopt;
  const std::string text = Utf8::repaired(answer->fieldText);
  const auto trimmed = Utf8::trimmed(text);
  if (trimmed.empty()) return std::nullopt;
  return std::string(trimmed);
}

}  // namespace pellar::Prompt
