#pragma once

#include <functional>
#include <string>

#include "platform/sim/office/ScriptError.h"
#include "tests/support/MenuStory.h"

namespace pellar {

// Stories of a user who gives a document of Word another name.
class RenameStory : public WordStory {
 protected:
  void renameTab(const std::string& tab, const std::string& answer) {
    mac.alerts().nextType(answer);
    choose(tab, {"Rename…"});
  }
  // Word does not save the document under that name.
  void renameInVain(const std::string& tab, const std::string& answer) {
    mac.office().beforeEvent = [](const std::string& event) {
      if (event == "save as") throw ScriptError(ScriptError::handlerFailed, "AppleEvent handler failed.");
    };
    renameTab(tab, answer);
    mac.office().beforeEvent = nullptr;
  }
  // The user answers, but something else happens first.
  void answerAfter(const std::function<void()>& happening, const std::string& answer) {
    mac.alerts().next([=](const TextAlert&) {
      happening();
      return TextAlertAnswer{TextAlertAnswer::firstButtonReturn, answer};
    });
  }
  void tag(const std::string& path, const std::string& color) {
    pellar.store().update([&](AppState& state) { state.tags[path] = color; });
  }
  [[nodiscard]] std::string failure(const std::string& name, const std::string& answer) {
    return "rename failed for " + pathOf(name) + " -> " + answer;
  }
};

}  // namespace pellar
