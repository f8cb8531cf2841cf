#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"

namespace pellar {

// The order that the tabs of one application must have, from rest to rest. Where several things happened in
// between more than one order is right: then it takes the one that is seen, and holds the program to it from
// there on.
class TabPlaces {
 public:
  using Windows = std::vector<SimWindow>;
  // What may stand on the tab of a window.
  using LabelsOf = std::function<std::set<std::string>(const SimWindow&)>;

  explicit TabPlaces(LabelsOf labelsOf) : labelsOf_(std::move(labelsOf)) {}

  [[nodiscard]] static bool hasTab(const SimWindow& window);
  [[nodiscard]] static bool contains(const Windows& windows, const SimWindow& window);
  [[nodiscard]] static std::string text(const Windows& windows);
  [[nodiscard]] static std::string text(const std::vector<std::string>& labels);

  // What is done, told before the program comes to rest.

  void happened() { ++happenings_; }
  void touched(const SimWindow& window) { touched_.insert(window.id()); }
  // Only what is seen tells what became of the order.
  void becomeUnsure() { orderUnknown_ = true; }
  // The user dropped the tab of a window at a place among the other tabs.
  void dropped(const SimWindow& window, std::size_t place);
  // Frames changed.
  void noteNarrow();
  // Another application is in front, or none.
  void forget();

  // At a rest, of the application in front.

  void begin(const SimApplication& application);
  // It cannot be judged now: each of its windows may have a tab, anywhere.
  void pass(const SimApplication& application);
  // The windows with a tab, in the order that is right where only one is.
  [[nodiscard]] Windows expect(const SimApplication& application);
  // The strip with these tabs is seen: gives the order, absent where the tabs do not tell it, and adds to
  // `wrong` what is wrong.
  std::optional<Windows> look(const std::vector<std::string>& labels, double stripWidth,
                              std::vector<std::string>& wrong);
  // The strip is hidden.
  void lookAway();
  // The rest is judged, and another interval begins.
  void end();
  // The same of one without an application.
  void endWithout();

  // The windows with a tab, in the order of the tabs; empty where that is not known.
  [[nodiscard]] Windows tabs() const { return known_ ? shown_ : Windows(); }
  [[nodiscard]] bool isKnown() const { return known_; }
  // Whether no more than one thing happened since the last rest, in a way that leaves no doubt.
  [[nodiscard]] bool isSingle() const { return happenings_ <= 1 && !orderUnknown_; }
  [[nodiscard]] ProcessId pid() const { return pid_; }
  [[nodiscard]] std::string described() const;

 private:
  void mayHaveCome(const SimApplication& application, const Windows& without);
  [[nodiscard]] bool isSure() const;
  [[nodiscard]] bool bringsUnknownPlace() const;
  [[nodiscard]] bool keepsPlaces(const Windows& seen) const;
  [[nodiscard]] std::optional<Windows> seenOrder(const std::vector<std::string>& labels) const;
  [[nodiscard]] std::optional<std::string> strangeLabel(const std::vector<std::string>& labels) const;

  LabelsOf labelsOf_;
  ProcessId pid_ = 0;           // whose order is known; 0 for nobody's
  Windows order_;               // of its windows, also of those on other spaces
  Windows shown_;               // those of them that had a tab at the last rest
  Windows expected_;            // those that have one at this rest
  bool known_ = false;          // whether that is what is seen
  bool placed_ = true;          // whether those expected have known places among the others
  std::size_t happenings_ = 0;  // since the last rest
  bool orderUnknown_ = false;   // more than one order is right
  // Since the last rest; of windows without a tab, or without a known place, since they had one.
  std::set<WindowId> touched_;
  std::set<WindowId> narrow_;  // since the last rest: too narrow for a tab
};

}  // namespace pellar
