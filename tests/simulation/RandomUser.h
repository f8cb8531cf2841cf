#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/simulation/RandomArranger.h"

namespace pellar {

// A user who does anything at any time, and tells the judge what he chose.
class RandomUser : public RandomArranger {
 public:
  explicit RandomUser(unsigned seed);

 protected:
  // Any one thing.
  void act();
  void tagTab();
  void changeSettings();
  // Chooses what is kept in the file in any case; nothing when there is no menu.
  void changeTheUpdateSetting();
  // A rename that failed here: its application may have saved the document under the new name all the same,
  // or save it later.
  struct LateRename {
    SimWindow window;
    std::string from;
  };
  [[nodiscard]] std::vector<LateRename>& lateRenames() { return lateRenames_; }
  // From here on menus and questions that open are answered.
  void answerMenusAndQuestions();

 private:
  void useMouse(std::size_t what);
  void click(ScreenPoint point, const std::function<void(ScreenPoint)>& way);
  void dragSomewhere();
  void dragTab();
  void closeTab();
  void renameTab();
  void openRecentFile();
  void saveGroup();
  void changeSettings(SimOpenMenu& menu);
  void chooseAny(SimOpenMenu& menu);
  [[nodiscard]] std::string itemOf(std::vector<std::string> rows);
  [[nodiscard]] ScreenPoint anywhere();
  [[nodiscard]] ScreenPoint somewhere();

  std::vector<LateRename> lateRenames_;  // since the program was started
  // What the user is about to answer to the question that opens next.
  std::optional<std::string> answerPlan_;
  std::vector<std::set<std::optional<std::string>>> filesPlan_;
};

}  // namespace pellar
