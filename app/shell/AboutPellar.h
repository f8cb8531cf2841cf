#pragma once

#include <deque>
#include <memory>
#include <string>

#include "app/info/AboutWindowController.h"
#include "app/info/Updater.h"
#include "app/shell/OwnWindows.h"
#include "platform/Platform.h"
#include "platform/Subscription.h"

namespace pellar {

// The About window, made when it is first asked for, and what it says about updates. Main thread only.
class AboutPellar {
 public:
  // What `platform` refers to outlives this.
  AboutPellar(const Platform& platform, std::shared_ptr<OwnWindows> windows,
              std::shared_ptr<Updater> updater);
  AboutPellar(const AboutPellar&) = delete;
  AboutPellar& operator=(const AboutPellar&) = delete;

  // Brings the window to the front.
  void showAbout();
  // A newer version was found: a window that exists says so.
  void announce(const std::string& latest);

 private:
  void check();
  void concludeCheck();

  Platform platform_;
  std::shared_ptr<OwnWindows> windows_;
  std::shared_ptr<Updater> updater_;
  std::unique_ptr<AboutWindowController> aboutWindow_;
  std::deque<Subscription> conclusions_;  // of checks under way, the oldest first
};

}  // namespace pellar
