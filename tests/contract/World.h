#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/Geometry.h"
#include "platform/Accessibility.h"
#include "platform/Canvas.h"
#include "platform/Platform.h"

namespace pellar::contract {

// The modifier keys that a user holds.
struct HeldKeys {
  bool shift = false;
  bool control = false;
  bool command = false;
};

// A window that a world opened, in that world's own counting.
enum class WorldWindow : int {};

// A desktop with its ports, and the hands of a user and of other applications on it. The contract tests know
// nothing else, so the same sources say what the simulated Mac promises and what a real desktop does.
//
// To run them against an adapter, make an executable of the object library `pellar_contract`, the adapter,
// and one source that derives a World and defines makeWorld(). Every test makes a new world. What a world
// cannot offer it must not pretend to: it leaves the tests of it out by a filter with the reason beside it.
class World {
 public:
  World() = default;
  virtual ~World() = default;
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  [[nodiscard]] virtual Platform& platform() = 0;

  // Runs the main loop until `condition` holds; false when it does not within `deadline` (of the loop's
  // clock).
  virtual bool wait(const std::function<bool()>& condition,
                    std::chrono::milliseconds deadline = std::chrono::seconds(10)) = 0;

  // Other applications, each a process of its own.
  virtual ProcessId launch(const std::string& name) = 0;
  virtual void terminate(ProcessId application) = 0;
  // Opens a standard window with this outer frame, which gets the focus with its application.
  virtual WorldWindow open(ProcessId application, const std::string& title, const AxRect& frame) = 0;
  virtual void retitle(WorldWindow window, const std::string& title) = 0;
  virtual void moveTo(WorldWindow window, AxPoint origin) = 0;
  virtual void minimise(WorldWindow window) = 0;
  virtual void restore(WorldWindow window) = 0;
  virtual void destroy(WorldWindow window) = 0;
  // The user brings a window to the front, with its application.
  virtual void focus(WorldWindow window) = 0;

  // The user's mouse and keyboard. What they do may take effect only while the test waits.
  virtual void movePointer(ScreenPoint point) = 0;  // with the left button held: drags
  virtual void pressLeft(ScreenPoint point) = 0;
  virtual void releaseLeft() = 0;
  virtual void clickRight(ScreenPoint point) = 0;
  virtual void clickMiddle(ScreenPoint point) = 0;
  virtual void type(std::string_view text) = 0;
  virtual void pressEscape() = 0;
  enum class Key { up, down, enter };
  virtual void press(Key key) = 0;
  // Downward when positive.
  virtual void turnWheel(ScreenPoint point, int notches) = 0;
  // Presses Tab and lets go of it.
  virtual void pressTab(const HeldKeys& held) = 0;
  // How often the application of a window has received Tab.
  [[nodiscard]] virtual int tabsReceived(WorldWindow window) = 0;

  // What the user does with the next pop-up menu: goes to the item at that place, counting from 0 what can be
  // chosen, and presses Return; presses Escape when it is absent. The menu opens afterwards.
  virtual void workNextMenu(std::optional<int> place) = 0;
  // What the user does with the next question: types a text, unless it is empty, and presses Return; presses
  // Escape when it is absent.
  virtual void answerNextQuestion(std::optional<std::string> text) = 0;
  // What another application would paste now.
  [[nodiscard]] virtual std::string pasted() = 0;

  // The colour that stands on the screen at a point of one of the program's panels; alpha is 1.
  [[nodiscard]] virtual Color colorAt(ScreenPoint point) = 0;
};

// A new, empty desktop. Defined once by each executable.
std::unique_ptr<World> makeWorld();

}  // namespace pellar::contract
