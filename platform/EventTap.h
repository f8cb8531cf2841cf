#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace pellar {

// What a tap on the session's key presses sees (CGEventTypes.h).
struct TapEvent {
  enum class Type { keyDown, disabledByTimeout, disabledByUserInput };
  Type type = Type::keyDown;
  std::uint16_t keyCode = 0;  // virtual key code; Tab is 48
  std::uint64_t flags = 0;    // CGEventFlags
};

// A tap on every key press of the session. Dropping it takes it away.
class EventTap {
 public:
  virtual ~EventTap() = default;
  // Puts a tap that the system disabled back to work.
  virtual void enable() = 0;
};

// Installs taps. Main thread only.
class EventTaps {
 public:
  // Called on the main thread for each event; true swallows the key, so that no application sees it. It must
  // return quickly: the session's input waits for it. A system that waits no longer delivers the key.
  using Handler = std::function<bool(const TapEvent&)>;

  virtual ~EventTaps() = default;
  // Null when the system refuses the tap.
  [[nodiscard]] virtual std::unique_ptr<EventTap> tapKeyDowns(Handler handler) = 0;
};

}  // namespace pellar
