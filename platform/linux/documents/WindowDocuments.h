#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Alive.h"
#include "platform/Accessibility.h"
#include "platform/Subscription.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

class MainLoop;

// Which files the windows show, as "file:" URLs. A window is looked up when it is first asked about and when
// its title has changed since, and now and then when it is asked about again, since another file of that name
// may have taken the place of the first. This is on a thread of its own: a network file system that is away
// holds nothing up. All that is asked in one turn of the main loop waits for answers no longer than one of it
// would; what is not there by then is told when it comes.
// Main thread only.
class WindowDocuments {
 public:
  // The absolute path of the document of a window with this title and process, if it has one. Called on
  // another thread, and may take as long as it takes.
  using LookUp =
      std::function<std::optional<std::string>(const std::string& title, std::optional<ProcessId>)>;
  // Gives the look-up for all that is asked in one go: what it has read of a process may serve them all.
  // Called on that thread, too.
  using MakeLookUp = std::function<LookUp()>;

  struct Shown {
    xcb_window_t window;
    std::string title;
    std::optional<ProcessId> process;
  };

  // `onFound` is called from the main loop when a document became known after it was asked for.
  // A turn of the loop waits `patience` for documents at most: a local file is found in a fraction of the
  // usual one, and the picture is still drawn in its frame.
  WindowDocuments(MainLoop& loop, MakeLookUp makeLookUp, std::function<void(xcb_window_t)> onFound,
                  std::chrono::milliseconds patience = std::chrono::milliseconds(8));
  ~WindowDocuments();

  [[nodiscard]] bool isKnown(xcb_window_t window) const { return known_.contains(window); }
  // Looks up windows that are not known, together.
  void lookUp(std::vector<Shown> windows);
  // The document of a window with this title and process. Absent while it is being looked up, when that takes
  // longer than this turn waits.
  [[nodiscard]] std::optional<std::string> document(xcb_window_t window, const std::string& title,
                                                    std::optional<ProcessId> process);

  // Forgets the windows for which `exists` is false, when many have come since it last did.
  void tidy(const std::function<bool(xcb_window_t)>& exists);

 private:
  using Time = std::chrono::nanoseconds;
  class Desk;
  struct Question;
  struct Known {
    std::string title;
    std::optional<ProcessId> process;
    std::optional<std::string> url;
    std::uint64_t question = 0;  // the one that will be, or was, answered
    bool answered = false;
    bool awaited = false;  // its answer is used at once
    Time askedAt{};
    Subscription later;
  };

  [[nodiscard]] Question questionOf(xcb_window_t window, Known& known);
  void askLater(xcb_window_t window, Known& known);
  void askWhenDue(xcb_window_t window, Known& known);
  // Waits for the answers as long as this turn of the loop may still wait. What comes afterwards is told.
  void askAndWait(std::vector<Question> questions);
  void ask(std::vector<Question> questions, bool first);
  void takeAnswers();

  MainLoop& loop_;
  MakeLookUp makeLookUp_;
  std::function<void(xcb_window_t)> onFound_;
  std::chrono::milliseconds patience_;
  std::map<xcb_window_t, Known> known_;
  std::size_t manyKnown_;
  std::uint64_t lastQuestion_ = 0;
  std::vector<Question> unasked_;                            // until the next turn
  std::optional<SideThread::Clock::time_point> waitsUntil_;  // in this turn
  bool late_ = false;                                        // an answer that was waited for
  Alive alive_;
  std::shared_ptr<Desk> desk_;
  SideThread thread_;
};

}  // namespace pellar
