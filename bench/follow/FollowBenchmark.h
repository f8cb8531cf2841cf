#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "bench/follow/Causes.h"
#include "bench/follow/Reactions.h"
#include "bench/follow/Samples.h"
#include "bench/follow/Subject.h"
#include "tests/e2e/Desktop.h"

namespace pellar::bench {

enum class Quantity {
  moveFromFrame,    // the frame's ConfigureNotify to the follower's, in microseconds
  moveFromRequest,  // the request to move the window to the follower's ConfigureNotify
  title,            // the title's PropertyNotify to the first drawing
  focusSameApp,     // the active window's PropertyNotify to the follower over it, or the task bar's drawing
  focusOtherApp,
  dragged,        // the processor time of all its threads for a second of a window's drag, in milliseconds
  mapped,         // from fork and exec to the window's MapNotify
  drawn,          // to more than a plain ground in it
  writtenMemory,  // megabytes, after everything else
};

// How much is measured.
struct Extent {
  int rounds = 5;
  int samples = 60;  // of each quantity in a round
  int windows = 8;   // of the editor, at least two
};

// A private desktop with an editor of some windows and, unless those are but two, a terminal on it. Each
// round starts each program anew, alone, in turn, and puts it through the same changes.
class FollowBenchmark {
 public:
  FollowBenchmark(std::vector<Subject> subjects, const Extent& extent);

  void run();
  [[nodiscard]] const Samples& samples(const std::string& subject, Quantity quantity) const;
  [[nodiscard]] bool has(const std::string& subject, Quantity quantity) const;
  [[nodiscard]] const std::vector<Subject>& subjects() const { return subjects_; }

 private:
  void measure(const Subject& subject);
  xcb_window_t startUp(const Subject& subject, std::unique_ptr<e2e::Process>& process);
  void measureMoves(const Subject& subject, xcb_window_t window);
  void measureDrag(const Subject& subject, const e2e::Process& process);
  void measureTitles(const Subject& subject, xcb_window_t window);
  void measureFocus(const Subject& subject, xcb_window_t window, Quantity quantity,
                    const std::vector<e2e::Window>& targets);
  void settle(const Subject& subject, xcb_window_t window, e2e::Window target);
  void rest();
  void begin(const Subject& subject, Quantity quantity);
  void add(const Subject& subject, Quantity quantity, double value);
  void miss(const Subject& subject, Quantity quantity);

  std::vector<Subject> subjects_;
  Extent extent_;
  std::map<std::pair<std::string, Quantity>, Samples> results_;

  e2e::Desktop desktop_;
  e2e::Application editor_;
  std::unique_ptr<e2e::Application> terminal_;
  std::vector<e2e::Window> documents_;
  e2e::Window shell_;
  Causes causes_;
  Reactions reactions_;
};

}  // namespace pellar::bench
