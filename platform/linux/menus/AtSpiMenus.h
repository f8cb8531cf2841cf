#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/Accessibility.h"
#include "platform/linux/system/SideThread.h"

namespace pellar {

class AtSpiElement;
class AtSpiTree;
class MainLoop;
struct AtSpiWindow;

// The menus of other programs, through AT-SPI 2. Nothing is connected, started or kept before the first menu
// bar is asked for. From then on a whole walk, from the menu bar to the item and its press, has one deadline:
// what does not come by then is absent, and a program that let it pass is not asked again for a while. One
// that was told to do something a short time ago may be busy with that, and is given longer. While an answer
// takes its time the main loop runs nested; what is asked then is absent, too. Main thread only.
class AtSpiMenus {
 public:
  explicit AtSpiMenus(MainLoop& loop);
  ~AtSpiMenus();
  AtSpiMenus(const AtSpiMenus&) = delete;
  AtSpiMenus& operator=(const AtSpiMenus&) = delete;

  // The menu bar of a window, with which a walk begins.
  [[nodiscard]] std::optional<Element> menuBar(const AtSpiWindow& window);
  // "AXTitle", "AXEnabled" and "AXChildren" of its parts. A title is what it was when the part was reached.
  [[nodiscard]] std::optional<AttributeValue> attribute(const AtSpiElement& element, std::string_view name);
  // Presses an item. Unanswered when the program was told to and the time was up before it answered.
  Performed press(const AtSpiElement& element);

 private:
  using Clock = SideThread::Clock;

  [[nodiscard]] std::optional<AttributeValue> children(const AtSpiElement& element);
  template <class Question>
  auto ask(ProcessId process, Clock::time_point deadline, Question question);

  MainLoop& loop_;
  std::shared_ptr<AtSpiTree> tree_;  // the side thread's
  std::map<ProcessId, Clock::time_point> silentSince_;
  std::map<ProcessId, Clock::time_point> pressedAt_;
  bool used_ = false;
  bool asking_ = false;
  SideThread thread_;  // depends-on: tree_
};

}  // namespace pellar
