#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/shell/AppDelegate.h"
#include "tests/simulation/InterruptedCalls.h"
#include "tests/simulation/RandomUser.h"
#include "tests/simulation/UnkindDisk.h"

namespace pellar {

// What was wrong on a day, and what had been done until then.
struct Finding {
  unsigned step = 0;
  std::string what;
  std::vector<std::string> trail;
};

// A day of a user, in steps: in each the user does one thing, or one thing happens, and the judge looks.
class RandomDay : public RandomUser {
 public:
  static constexpr unsigned stepsPerDay = 120;

  // The day that this number stands for.
  explicit RandomDay(unsigned seed);

  // Lives the steps of these numbers, which rise, and the evening; the first finding ends the day.
  // With what is seen after each step, when the story is to be read.
  [[nodiscard]] std::optional<Finding> live(const std::vector<unsigned>& steps, bool toBeRead = false);

 private:
  void start();
  void restart();
  // Takes the program away, in the middle of whatever is shown or waited for, and looks that nothing is left.
  void end();
  void step();
  void evening();
  void lookForColoursLeftBehind();
  void goBackTo(SimApplication& application);
  // The world has the program look again.
  void lookAgain();

  void killedInTheMiddle();
  void changeWhileTheDiskRefuses();
  void quit();
  void setTheClock();
  void answerForUpdates();
  [[nodiscard]] ScriptResult answer(const std::string& source);

  InterruptedCalls interrupted_{mac().accessibility()};
  UnkindDisk disk_;
  std::optional<AppDelegate> pellar_{std::in_place, mac().platformWith(interrupted_),
                                     disk_.operations()};  // depends-on: interrupted_, disk_
  int scriptsUnderWay_ = 0;
  bool honest_ = true;  // no application lies at the moment
  bool isEvening_ = false;
};

}  // namespace pellar
