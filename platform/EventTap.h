#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace pellar {

// The modifier bits of CGEventFlags.
namespace KeyFlags {
inline constexpr std::uint64_t capsLock = 0x10000;
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
}  // namespace KeyFlags

// What a tap on the session's key presses sees (CGEventTypes.h).
struct TapEvent {
  enum class Type { keyDown, disabledByTimeout, disabledByUserInput };
  Type type = Type::keyDown;
  std::uint16_t keyCode = 0;  // virtual (VirtualKey)
  std::uint64_t flags = 0;    // KeyFlags, and bits of no meaning here
};

// A key with some modifiers held and others not. What is not in `mask` does not matter.
struct KeyCombination {
  std::uint16_t keyCode = 0;
  std::uint64_t mask = 0;
  std::uint64_t flags = 0;
  [[nodiscard]] bool matches(const TapEvent& event) const {
    return event.type == TapEvent::Type::keyDown && event.keyCode == keyCode && (event.flags & mask) == flags;
  }
};

// A tap on key presses of the session, which listens from the start. Dropping it takes it away.
class EventTap {
 public:
  virtual ~EventTap() = default;
  // While the tap does not listen, no key waits for the handler: each goes to its application, and it hears
  // of none. Where the tap is served by the main thread, a key pressed while that is held up waits as long as
  // the tap listens. True also puts a tap that the system disabled back to work. The system may tell the
  // handler of a tap that was made to rest that it is disabled.
  virtual void setListening(bool listens) = 0;
};

// Installs taps. Main thread only.
class EventTaps {
 public:
  // Called on the main thread for each event; true swallows the key, so that no application sees it. The
  // handler must return quickly: the session's input waits for it. A press that the system did not want to
  // wait for any longer has reached its application, and the handler is not called for it.
  using Handler = std::function<bool(const TapEvent&)>;

  virtual ~EventTaps() = default;
  // Null when the system refuses the tap. A system that can tap single combinations shows the handler no
  // other presses than those of `wanted`; another one shows it all.
  [[nodiscard]] virtual std::unique_ptr<EventTap> tapKeyDowns(const KeyCombination& wanted,
                                                              Handler handler) = 0;
};

}  // namespace pellar
