#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace pellar {

// Makes this copy of the program the only one on its display: it owns a selection there, which the X server
// takes back as soon as its owner is gone, however it ended. Made after the toolkit's application object.
class SingleInstance {
 public:
  // Null when another copy owns the display already; that one has then been asked to open its menu. Where the
  // server cannot be asked, this copy is taken for the only one.
  static std::unique_ptr<SingleInstance> claim();
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Another copy was started. Called from the main loop.
  std::function<void()> onAsked;

 private:
  explicit SingleInstance(xcb_connection_t* connection);
  bool own();
  void take();

  xcb_connection_t* connection_;
  xcb_window_t window_ = 0;
  xcb_atom_t selection_ = 0;
  xcb_atom_t request_ = 0;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace pellar
