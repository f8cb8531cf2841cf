#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "tests/simulation/Judge.h"

namespace pellar {

// A simulated desktop on which applications, windows, spaces and displays come, go and misbehave at random,
// from a seed.
class RandomDesktop {
 public:
  explicit RandomDesktop(unsigned seed);
  RandomDesktop(const RandomDesktop&) = delete;
  RandomDesktop& operator=(const RandomDesktop&) = delete;

  [[nodiscard]] SimMac& mac() { return mac_; }
  [[nodiscard]] Judge& judge() { return judge_; }

  // What is drawn from now on depends on the day and this number alone, so that a step is the same whichever
  // others are lived.
  void beginStep(unsigned step) { random_.seed(seed_ * 100'003U + step); }
  std::size_t below(std::size_t bound);
  bool chance(std::size_t outOf) { return below(outOf) == 0; }
  template <class T>
  T& any(std::vector<T>& all) {
    return all[below(all.size())];
  }

  // Starts all applications.
  void begin();
  // Any one thing happens.
  void happen();
  // Every application answers again, and nothing happens any more.
  void calmDown();
  [[nodiscard]] std::vector<SimApplication>& applications() { return applications_; }

  // What the user does while an application hangs.
  std::function<void()> actMeanwhile;
  // Each thing that happened, for who looks for a fault.
  void told(const std::string& what) { trail_.push_back(what); }
  [[nodiscard]] const std::vector<std::string>& trail() const { return trail_; }

 private:
  static constexpr std::array names{"org.example.editor", "org.example.viewer", "com.microsoft.Word"};

  void launch(std::size_t which);
  void giveMenus(SimApplication& application);
  [[nodiscard]] std::string placeOf(const std::string& title);
  [[nodiscard]] AxRect frame();
  void open(const std::string& title);
  void giveQuirks(SimWindow& window);
  void vanish(SimWindow& window);
  [[nodiscard]] SimWindow anyWindow();
  void changeWindow(std::size_t what, SimWindow& window, SimApplication& owner);
  void changeDesktop(std::size_t what, SimWindow& window, SimApplication& application);
  [[nodiscard]] int anySpace();
  void changeDisplays();
  void changeNativeTabs(SimApplication& application);
  void hang(SimApplication& application);

  // A title no window had before.
  [[nodiscard]] std::string newTitle();

  unsigned seed_;
  std::mt19937 random_;
  SimMac mac_;
  std::vector<SimApplication> applications_;
  Judge judge_{mac_, applications_};  // depends-on: mac_, applications_
  std::vector<SimWindow> windows_;
  unsigned titles_ = 0;
  std::vector<std::string> trail_;
  bool calm_ = false;
  std::vector<Subscription> thaws_;  // of applications that hang
};

}  // namespace pellar
