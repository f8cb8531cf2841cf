#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "tests/simulation/DocumentWatch.h"
#include "tests/simulation/FrameWatch.h"
#include "tests/simulation/LogWatch.h"
#include "tests/simulation/PanelWatch.h"
#include "tests/simulation/SavedState.h"
#include "tests/simulation/TabPlaces.h"
#include "tests/simulation/UpdateWatch.h"
#include "tests/simulation/WindowNames.h"

namespace pellar {

// Says whether what the user sees, and what is on the disk, is right whenever the program has come to rest.
// It goes by the simulated world and by what the user did, and asks nothing of the program. Where several
// things happened before the program came to rest, more than one order of the tabs is right: then it takes
// the one that is seen, and holds the program to it from there on.
class Judge {
 public:
  Judge(SimMac& mac, const std::vector<SimApplication>& applications);

  // What is done, told before the program comes to rest.

  // The program was started, and knows nothing but its file.
  void started() {
    places_.forget();
    panels_.started();
    frames_.started();
  }
  // One more thing happened, be it done by the user or not.
  void happened() {
    places_.happened();
    frames_.happened();
    asked_ = 0;
  }
  // Something was done to this window.
  void touched(const SimWindow& window) {
    places_.touched(window);
    names_.note(window);
    frames_.touched(window);
  }
  // The application did not answer, or changed in a way that it does not tell.
  void leftInDoubt(ProcessId pid);
  // The only window of the application in front whose tab may read so; absent when there are several.
  [[nodiscard]] std::optional<SimWindow> onlyWindowWith(const std::string& label) const;
  [[nodiscard]] bool frontAnswers() const;
  // The window that the strip stands over since the last rest; absent where that is not sure.
  [[nodiscard]] std::optional<SimWindow> front() const;
  // Whether that is so of the one in front.
  [[nodiscard]] bool isFrontInDoubt() const;
  // The application gave another answer than the truth, so that what was done just now may have failed.
  void lied(ProcessId pid);
  // The world is about to make the program look again.
  void looksAgain();
  // Only what is seen tells what became of the tabs' order.
  void draggedSomewhere() { places_.becomeUnsure(); }
  // The user dropped the tab of a window at a place among the other tabs.
  void dropped(const SimWindow& window, std::size_t place) { places_.dropped(window, place); }

  // Compares.
  void atRest();

  // The windows with a tab, in the order of the tabs; empty where the judge does not know.
  [[nodiscard]] std::vector<SimWindow> tabs() const { return places_.tabs(); }
  [[nodiscard]] const WindowNames& names() const { return names_; }
  [[nodiscard]] SavedState& state() { return state_; }
  [[nodiscard]] DocumentWatch& documents() { return documents_; }
  [[nodiscard]] LogWatch& log() { return log_; }
  [[nodiscard]] UpdateWatch& updates() { return updates_; }
  [[nodiscard]] FrameWatch& frames() { return frames_; }

  // Whether no more than one thing happened since the last rest, in a way that leaves no doubt.
  [[nodiscard]] bool isSingle() const { return places_.isSingle(); }

  // What was wrong, in words.
  [[nodiscard]] const std::vector<std::string>& findings() const { return findings_; }
  void found(std::string what) { findings_.push_back(std::move(what)); }
  // The application in front and the strip, as they are.
  [[nodiscard]] std::string described() const;
  // How many rests were judged in full, and how many only in part.
  struct Count {
    std::size_t whole = 0;
    std::size_t partly = 0;
    std::size_t hidden = 0;
    [[nodiscard]] std::size_t all() const { return whole + partly + hidden; }
    Count& operator+=(const Count& other) {
      whole += other.whole;
      partly += other.partly;
      hidden += other.hidden;
      return *this;
    }
  };
  [[nodiscard]] const Count& count() const { return count_; }
  [[nodiscard]] const PanelWatch& panels() const { return panels_; }

 private:
  using Windows = TabPlaces::Windows;

  [[nodiscard]] const SimApplication* inFront() const;
  [[nodiscard]] bool isInDoubt(const SimApplication& application);

  void judgeStrip();
  void judgeFrames();
  void judgeHidden(const std::string& why);
  void judgeTabs(const SimApplication& application, bool asked);
  void judgeFront(const Windows& fronts);
  void judgePlace(const SimWindow& front);
  void judgeLooks(const SimApplication& application, const Windows& tabs);
  void judgeCard(const Windows& tabbed);

  SimMac& mac_;
  const std::vector<SimApplication>& applications_;
  SavedState state_;
  DocumentWatch documents_;
  UpdateWatch updates_;
  LogWatch log_;  // depends-on: updates_
  std::vector<std::string> findings_;
  Count count_;

  WindowNames names_{mac_, applications_};
  TabPlaces places_{[this](const SimWindow& window) { return names_.labelsOf(window); }};
  PanelWatch panels_{mac_};
  FrameWatch frames_{mac_};
  std::optional<Windows>
      fronts_;  // of which one is in front, at the last rest; absent where that is not known
  std::set<ProcessId> inDoubt_;
  ProcessId lastInFront_ = 0;
  ProcessId asked_ = 0;  // who was looked at anew since the last rest, and answered; 0 for nobody
  Subscription activated_;
  Subscription resized_;
};

}  // namespace pellar
