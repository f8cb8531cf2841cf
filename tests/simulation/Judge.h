#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"
#include "tests/simulation/DocumentWatch.h"
#include "tests/simulation/LogWatch.h"
#include "tests/simulation/SavedState.h"
#include "tests/simulation/UpdateWatch.h"

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
  void started();
  // One more thing happened, be it done by the user or not.
  void happened() {
    ++happenings_;
    asked_ = 0;
  }
  // Something was done to this window.
  void touched(const SimWindow& window) {
    touched_.insert(window.id());
    titles_[window.title()].insert(window.id());
  }
  // The application did not answer, or changed in a way that it does not tell.
  void leftInDoubt(ProcessId pid);
  // The only window of the application in front whose tab may read so; absent when there are several.
  [[nodiscard]] std::optional<SimWindow> onlyWindowWith(const std::string& label) const;
  [[nodiscard]] bool frontAnswers() const;
  // Whether that is so of the one in front.
  [[nodiscard]] bool isFrontInDoubt() const;
  // The application gave another answer than the truth, so that what was done just now may have failed.
  void lied(ProcessId pid);
  // The world is about to make the program look again.
  void looksAgain();
  // Only what is seen tells what became of the tabs' order.
  void draggedSomewhere() { orderUnknown_ = true; }
  // The user dropped the tab of a window at a place among the other tabs.
  void dropped(const SimWindow& window, std::size_t place);

  // Compares.
  void atRest();

  // The windows with a tab, in the order of the tabs; empty where the judge does not know.
  [[nodiscard]] std::vector<SimWindow> tabs() const { return known_ ? shown_ : std::vector<SimWindow>(); }
  // The keys under which the colour of a window may be kept.
  [[nodiscard]] std::set<std::string> tagKeys(const SimWindow& window) const;
  // The document of an Office window; null for none.
  [[nodiscard]] SimDocumentPointer documentOf(const SimWindow& window) const;
  // The files that may be behind a window; absent for none.
  [[nodiscard]] std::set<std::optional<std::string>> filesOf(const SimWindow& window) const;

  [[nodiscard]] SavedState& state() { return state_; }
  [[nodiscard]] DocumentWatch& documents() { return documents_; }
  [[nodiscard]] LogWatch& log() { return log_; }
  [[nodiscard]] UpdateWatch& updates() { return updates_; }

  // Whether no more than one thing happened since the last rest, in a way that leaves no doubt.
  [[nodiscard]] bool isSingle() const { return happenings_ <= 1 && !orderUnknown_; }

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

 private:
  using Windows = std::vector<SimWindow>;

  [[nodiscard]] const SimApplication* inFront() const;
  [[nodiscard]] bool isInDoubt(const SimApplication& application);
  [[nodiscard]] static bool hasTab(const SimWindow& window);
  [[nodiscard]] std::set<std::string> labelsOf(const SimWindow& window) const;
  [[nodiscard]] Windows expectedOrder(const Windows& listed) const;
  [[nodiscard]] std::optional<Windows> seenOrder(const Windows& tabbed) const;
  [[nodiscard]] bool isSure(const Windows& expected) const;
  [[nodiscard]] bool bringsUnknownPlace(const Windows& expected) const;
  [[nodiscard]] bool keepsPlaces(const Windows& seen) const;

  void judgeStrip();
  void judgeHidden(const std::string& why);
  void judgeTabs(const SimApplication& application, const Windows& tabbed, bool asked);
  [[nodiscard]] std::optional<Windows> judgeOrder(const SimApplication& application, const Windows& tabbed,
                                                  const Windows& expected);
  void judgeFront(const Windows& fronts);
  void judgePlace(const SimWindow& front);
  void judgeLooks(const SimApplication& application, const Windows& tabs, const SimWindow& front);
  void judgeCard(const Windows& tabbed);
  void judgeDropdown(const Windows& fronts);
  void judgePanelsOverNothing();
  void noteNarrow();
  void forgetOrder();
  void losePlaces(const SimApplication& application, const Windows& without);
  void closeInterval();
  [[nodiscard]] const SimPanel* panelOf(Size contentSize) const;
  [[nodiscard]] bool isShown(Size contentSize) const;

  SimMac& mac_;
  const std::vector<SimApplication>& applications_;
  SavedState state_;
  DocumentWatch documents_;
  UpdateWatch updates_;
  LogWatch log_;  // depends-on: updates_
  std::vector<std::string> findings_;
  Count count_;

  ProcessId pid_ = 0;           // whose order is known; 0 for nobody's
  Windows order_;               // of its windows, also of those on other spaces
  Windows shown_;               // those of them that had a tab at the last rest
  bool known_ = false;          // whether that is what is seen
  std::size_t happenings_ = 0;  // since the last rest
  bool orderUnknown_ = false;   // more than one order is right
  // Since the last rest; of windows without a tab, or without a known place, since they had one.
  std::set<WindowId> touched_;
  std::set<ProcessId> inDoubt_;
  ProcessId lastInFront_ = 0;
  ProcessId asked_ = 0;        // who was looked at anew since the last rest, and answered; 0 for nobody
  std::set<WindowId> narrow_;  // likewise; windows that were too narrow for a tab
  // The files of documents that bore the name of an Office window while it had its title.
  struct Namesakes {
    std::string title;
    std::set<std::optional<std::string>> files;
  };
  std::map<WindowId, Namesakes> namesakes_;
  std::map<std::string, std::set<WindowId>> titles_;  // whose each title ever was
  std::optional<WindowId> searchedOver_;              // the front window when the drop-down was first seen
  Subscription activated_;
  Subscription resized_;
};

}  // namespace pellar
