#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/linux/x11/DesktopScale.h"
#include "platform/linux/x11/PointMap.h"
#include "platform/linux/x11/X11Connection.h"

namespace pellar {

class X11Mirror;

// Which monitors there are, by RandR, how many pixels a point has on each, and so where the points of the
// application are on the X screen. Everything that turns points into pixels asks here. Asks the server only
// after one of these changed; the mirror tells of that as of any other change of the screens.
class X11Density {
 public:
  struct Monitor {
    std::string name;
    RootRect pixels;
    double scale = 1;
  };

  X11Density(X11Connection& connection, X11Mirror& mirror);
  X11Density(const X11Density&) = delete;
  X11Density& operator=(const X11Density&) = delete;

  // The monitors as they are now, for who has no mirror yet; none while the server does not answer.
  [[nodiscard]] static std::vector<Monitor> monitorsOf(const X11Connection& connection);

  [[nodiscard]] const PointMap& map() const;
  // The whole X screen.
  [[nodiscard]] RootRect root() const;

  // The map of a panel of ours. One that touches the active window is that window's, whatever monitor it is
  // on by itself.
  [[nodiscard]] const MonitorMap& ofPanel(const AxRect& frame) const;

 private:
  struct Reading {
    RootRect root;
    std::vector<Monitor> monitors;
    std::optional<std::string> nonsense;
  };
  [[nodiscard]] static Reading read(const X11Connection& connection);
  void noteChange();
  void update() const;

  X11Connection& connection_;
  X11Mirror& mirror_;
  mutable bool stale_ = true;
  mutable Reading reading_;
  mutable PointMap map_;
  Subscription events_;
};

}  // namespace pellar
