#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>
#include <optional>

class QSocketNotifier;

namespace pellar {

// Makes this copy of the program the only one on its display: it owns a selection there, which the X server
// takes back as soon as its owner is gone, however it ended. Made after the toolkit's application object.
class SingleInstance {
 public:
  // What became of the claim. Without an instance another copy owns the display already and has been asked to
  // open its menu; it did unless it does not answer. Where the server cannot be asked, this copy is taken for
  // the only one.
  struct Claim {
    std::unique_ptr<SingleInstance> instance;
    bool otherAnswered = false;
  };
  static Claim claim();
  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Another copy was started. Called from the main loop.
  std::function<void()> onAsked;

 private:
  explicit SingleInstance(xcb_connection_t* connection);
  // What the other copy says: nothing, or it ended meanwhile.
  enum class Answer { given, none, ended };

  bool own();
  [[nodiscard]] xcb_window_t takeUnlessOwned() const;
  [[nodiscard]] Answer ask(xcb_window_t owner);
  [[nodiscard]] std::optional<Answer> nextAnswer();
  void take();
  void send(xcb_window_t to) const;

  xcb_connection_t* connection_;
  bool otherAnswered_ = false;
  xcb_window_t window_ = 0;
  xcb_atom_t selection_ = 0;
  xcb_atom_t request_ = 0;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace pellar
