#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "core/Alive.h"
#include "platform/Accessibility.h"
#include "platform/Subscription.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

class MainLoop;

// Which files the windows show, as "file:" URLs. A window is looked up when it is first asked about and when
// its title has changed since, and now and then when it is asked about again, since another file of that name
// may have taken the place of the first. This is on a thread of its own: a network file system that is away
// holds nothing up.
// Main thread only.
class WindowDocuments {
 public:
  // The absolute path of the document of a window with this title and process, if it has one. Called on
  // another thread, and may take as long as it takes.
  using LookUp =
      std::function<std::optional<std::string>(const std::string& title, std::optional<ProcessId>)>;

  // `onFound` is called from the main loop when a document became known after it was asked for.
  WindowDocuments(MainLoop& loop, LookUp lookUp, std::function<void(xcb_window_t)> onFound);

  // The document of a window with this title and process. Absent while it is being looked up, when that takes
  // longer than a moment.
  [[nodiscard]] std::optional<std::string> document(xcb_window_t window, const std::string& title,
                                                    std::optional<ProcessId> process);

  // Forgets the windows for which `exists` is false, when many are remembered.
  void tidy(const std::function<bool(xcb_window_t)>& exists);

 private:
  using Time = std::chrono::nanoseconds;
  struct Known {
    std::string title;
    std::optional<ProcessId> process;
    std::optional<std::string> url;
    std::uint64_t question = 0;  // the one that will be, or was, answered
    bool answered = false;
    bool refused = false;  // too many were waiting
    Time askedAt{};
    Subscription later;
  };

  void ask(xcb_window_t window, Known& known);
  void askAndWait(xcb_window_t window, Known& known);
  void askWhenDue(xcb_window_t window, Known& known);
  void take(xcb_window_t window, std::uint64_t question, std::optional<std::string> path);

  MainLoop& loop_;
  LookUp lookUp_;
  std::function<void(xcb_window_t)> onFound_;
  std::map<xcb_window_t, Known> known_;
  std::uint64_t lastQuestion_ = 0;
  Alive alive_;
  SideThread thread_;
};

}  // namespace pellar
