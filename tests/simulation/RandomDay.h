#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "app/shell/AppDelegate.h"
#include "platform/sim/faults/ForwardingAccessibility.h"
#include "tests/simulation/RandomDesktop.h"

namespace pellar {

// Lets something happen inside writes and actions, as calls to other processes do that run a nested loop.
class InterruptedCalls final : public ForwardingAccessibility {
 public:
  using ForwardingAccessibility::ForwardingAccessibility;

  std::function<void()> happening;

  void set(const Element& element, std::string_view name, const AttributeValue& value) override;
  Performed perform(const Element& element, std::string_view action) override;

 private:
  void interrupt();

  bool inside_ = false;
};

// What was wrong on a day, and what had been done until then.
struct Finding {
  unsigned step = 0;
  std::string what;
  std::vector<std::string> trail;
};

// A day of a user, in steps: in each the user does one thing, or one thing happens, and the judge looks.
class RandomDay : public RandomDesktop {
 public:
  static constexpr unsigned stepsPerDay = 120;

  // The day that this number stands for.
  explicit RandomDay(unsigned seed);

  // Lives the steps of these numbers, which rise, and the evening; the first finding ends the day.
  // With what is seen after each step, when the story is to be read.
  [[nodiscard]] std::optional<Finding> live(const std::vector<unsigned>& steps, bool toBeRead = false);

 private:
  [[nodiscard]] StripReader strip() { return mac().strip(); }

  void start();
  void restart();
  void step();
  void evening();
  void goBackTo(SimApplication& application);
  // The world has the program look again.
  void lookAgain();

  // What the user does.
  void act();
  void useMouse(std::size_t what);
  void click(ScreenPoint point, const std::function<void(ScreenPoint)>& way);
  void dragSomewhere();
  void dragTab();
  void tagTab();
  void closeTab();
  void renameTab();
  void saveGroup();
  void changeSettings();
  void changeSettings(SimOpenMenu& menu);
  void answerMenusAndQuestions();
  void chooseAny(SimOpenMenu& menu);
  [[nodiscard]] std::string itemOf(std::vector<std::string> rows);
  [[nodiscard]] ScreenPoint anywhere();
  [[nodiscard]] ScreenPoint somewhere();
  // A tab that can be taken hold of; absent when there is none.
  [[nodiscard]] std::optional<std::size_t> anyTab();

  InterruptedCalls interrupted_{mac().accessibility()};
  std::optional<AppDelegate> pellar_{std::in_place,
                                     mac().platformWith(interrupted_)};  // depends-on: interrupted_
  int scriptsUnderWay_ = 0;
  // What the user is about to do with the menu, and to answer to the question, that opens next.
  std::function<void(SimOpenMenu&)> menuPlan_;
  std::optional<std::string> answerPlan_;
  std::vector<std::set<std::optional<std::string>>> filesPlan_;
};

}  // namespace pellar
