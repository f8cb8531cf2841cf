#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "app/tracking/PlaceInFront.h"
#include "platform/MainLoop.h"
#include "platform/Windows.h"

namespace pellar {

// The plain windows of this program. One that is shown takes the place in front; when the last one closes, by
// the user or by the program, the place is given back. Main thread only.
class OwnWindows final : public Windows, public std::enable_shared_from_this<OwnWindows> {
 public:
  // `windows` and `mainLoop` outlive this.
  static std::shared_ptr<OwnWindows> create(Windows& windows, MainLoop& mainLoop,
                                            std::shared_ptr<PlaceInFront> place);
  OwnWindows(const OwnWindows&) = delete;
  OwnWindows& operator=(const OwnWindows&) = delete;

  // The window may outlive this.
  [[nodiscard]] std::unique_ptr<PlainWindow> makeWindow(const WindowDescription& description) override;

 private:
  class Window;

  OwnWindows(Windows& windows, MainLoop& mainLoop, std::shared_ptr<PlaceInFront> place)
      : windows_(windows), mainLoop_(mainLoop), place_(std::move(place)) {}

  void closed();

  Windows& windows_;
  MainLoop& mainLoop_;
  std::shared_ptr<PlaceInFront> place_;
  std::vector<const Window*> all_;
};

}  // namespace pellar
