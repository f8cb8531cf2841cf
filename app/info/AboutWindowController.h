#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Windows.h"
#include "platform/Workspace.h"

namespace pellar {

// The window with the program's name, version and update status. Main thread only.
class AboutWindowController {
 public:
  // `windows` and `workspace` outlive this. `site` is the product's web site, without a slash at its end.
  AboutWindowController(Windows& windows, Workspace& workspace, std::string site, const std::string& version,
                        const std::string& build, std::function<void()> onCheck);
  AboutWindowController(const AboutWindowController&) = delete;
  AboutWindowController& operator=(const AboutWindowController&) = delete;

  [[nodiscard]] PlainWindow& window() { return *window_; }
  // The line about updates.
  void setStatus(const std::string& status);

 private:
  void check();

  Workspace& workspace_;
  std::string site_;
  std::function<void()> onCheck_;
  std::unique_ptr<PlainWindow> window_;
};

}  // namespace pellar
