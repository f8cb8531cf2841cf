#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/sim/SimMac.h"

namespace pellar {

// Under which names a window may be known, from the simulated world. Several are right for a window of an
// Office application, which is asked for its documents and may not have been able to tell.
class WindowNames {
 public:
  // The last of the applications is Word.
  WindowNames(SimMac& mac, const std::vector<SimApplication>& applications)
      : mac_(mac), applications_(applications) {}

  // Takes note of the titles, and of which documents are open now.
  void lookAround();
  // The window has its title at this moment.
  void note(const SimWindow& window) { titles_[window.title()].insert(window.id()); }

  // The document of an Office window; null for none.
  [[nodiscard]] SimDocumentPointer documentOf(const SimWindow& window) const;
  // The files that may be behind a window; absent for none.
  [[nodiscard]] std::set<std::optional<std::string>> filesOf(const SimWindow& window) const;
  // What may stand on its tab.
  [[nodiscard]] std::set<std::string> labelsOf(const SimWindow& window) const;
  // The keys under which its colour may be kept; none where it may be kept under any.
  [[nodiscard]] std::set<std::string> tagKeys(const SimWindow& window) const;
  // Whether it ever had this title, or a file of this name.
  [[nodiscard]] bool mayBeCalled(const SimWindow& window, const std::string& name) const;

 private:
  SimMac& mac_;
  const std::vector<SimApplication>& applications_;
  // The files of documents that bore the name of an Office window while it had its title.
  struct Namesakes {
    std::string title;
    std::set<std::optional<std::string>> files;
  };
  std::map<WindowId, Namesakes> namesakes_;
  std::map<std::string, std::set<WindowId>> titles_;  // whose each title ever was
};

}  // namespace pellar
