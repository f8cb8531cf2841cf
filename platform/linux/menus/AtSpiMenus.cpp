#include "platform/linux/menus/AtSpiMenus.h"

#include <algorithm>
#include <atomic>
#include <utility>
#include <vector>

#include "platform/linux/menus/AtSpiElement.h"
#include "platform/linux/menus/AtSpiTree.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using Part = AtSpiElement::Part;

constexpr auto walkTime = 1500ms;
// A program that was told to save one document answers for the next one when that is written: a long one, to
// a disk at the other end of a network.
constexpr auto workTime = 30s;
// What the answer may need to get from the side thread here.
constexpr auto slack = 10ms;
// The bus library ends a call by one of the toolkit's coarse timers, which may be early by a twentieth.
constexpr AtSpiBus::Clock::duration coarsenessOf(AtSpiBus::Clock::duration time) {
  return time / 20 + 25ms;
}
constexpr auto silence = 2s;
constexpr auto busFarewell = 200ms;

}  // namespace

AtSpiMenus::AtSpiMenus(MainLoop& loop) : loop_(loop), tree_(std::make_shared<AtSpiTree>()) {}

AtSpiMenus::~AtSpiMenus() {
  if (!used_) return;
  const auto deadline = Clock::now() + busFarewell;
  thread_.run(
      [tree = std::move(tree_), deadline]() mutable {
        tree->letGo(deadline);
        tree.reset();
      },
      deadline + slack);
}

// What a question to the tree says, asked on the side thread; absent when it is late.
template <class Question>
auto AtSpiMenus::ask(ProcessId process, Clock::time_point deadline, Question question) {
  using Answer = std::invoke_result_t<Question, AtSpiTree&>;
  const auto now = Clock::now();
  if (asking_ || now >= deadline) return Answer();
  asking_ = true;
  auto answer = thread_.askInLoop([tree = tree_, question = std::move(question)] { return question(*tree); },
                                  deadline + slack, loop_);
  asking_ = false;
  if (!answer || Clock::now() >= deadline - coarsenessOf(deadline - now))
    silentSince_.insert_or_assign(process, Clock::now());
  return answer ? std::move(*answer) : Answer();
}

std::optional<Element> AtSpiMenus::menuBar(const AtSpiWindow& window) {
  const auto now = Clock::now();
  std::erase_if(silentSince_, [now](const auto& entry) { return now - entry.second > silence; });
  std::erase_if(pressedAt_, [now](const auto& entry) { return now - entry.second > workTime; });
  if (silentSince_.contains(window.process)) return std::nullopt;
  used_ = true;
  const auto pressed = pressedAt_.find(window.process);
  const auto deadline =
      std::max(now + walkTime, pressed == pressedAt_.end() ? now : pressed->second + workTime);
  auto bar = ask(window.process, deadline,
                 [window, deadline](AtSpiTree& tree) { return tree.menuBar(window, deadline); });
  if (!bar) return std::nullopt;
  return AtSpiElement::make({Part::menuBar, std::move(*bar), std::nullopt, deadline, window.process});
}

std::optional<AttributeValue> AtSpiMenus::attribute(const AtSpiElement& element, std::string_view name) {
  const auto& facts = element.facts();
  if (name == "AXTitle" && facts.name) return *facts.name;
  if (name == "AXChildren") return children(element);
  if (name == "AXEnabled" && facts.part == Part::item) {
    const auto enabled = ask(facts.process, facts.deadline,
                             [object = facts.object, deadline = facts.deadline](AtSpiTree& tree) {
                               return tree.isEnabled(object, deadline);
                             });
    if (enabled) return *enabled;
  }
  return std::nullopt;
}

std::optional<AttributeValue> AtSpiMenus::children(const AtSpiElement& element) {
  const auto& parent = element.facts();
  const auto part = [&parent](Part kind, AtSpiObject object, std::optional<std::string> name) {
    return AtSpiElement::make({kind, std::move(object), std::move(name), parent.deadline, parent.process});
  };
  if (parent.part == Part::barItem) {
    auto menu = ask(parent.process, parent.deadline,
                    [object = parent.object, deadline = parent.deadline](AtSpiTree& tree) {
                      return tree.menuOf(object, deadline);
                    });
    if (!menu) return std::nullopt;
    return std::vector<Element>{part(Part::menu, std::move(*menu), parent.name)};
  }
  if (parent.part != Part::menuBar && parent.part != Part::menu) return std::nullopt;
  const auto found = ask(parent.process, parent.deadline,
                         [object = parent.object, deadline = parent.deadline](AtSpiTree& tree) {
                           return tree.children(object, deadline);
                         });
  if (!found) return std::nullopt;
  std::vector<Element> result;
  const bool isBar = parent.part == Part::menuBar;
  if (isBar) result.push_back(part(Part::systemMenu, parent.object, std::string()));
  for (const auto& each : *found)
    result.push_back(part(isBar ? Part::barItem : Part::item, each.object, each.name));
  return result;
}

Performed AtSpiMenus::press(const AtSpiElement& element) {
  const auto& facts = element.facts();
  if (facts.part != Part::item) return Performed::refused;
  const auto sent = std::make_shared<std::atomic<bool>>(false);
  // What the press itself leads to may be a question to the user, who takes his time.
  const auto deadline = std::min(facts.deadline, Clock::now() + walkTime);
  const auto answer = ask(facts.process, deadline, [object = facts.object, deadline, sent](AtSpiTree& tree) {
    return std::optional(tree.press(object, deadline, *sent));
  });
  if (*sent) {
    // It is not silent but at work.
    silentSince_.erase(facts.process);
    pressedAt_.insert_or_assign(facts.process, Clock::now());
  }
  return answer.value_or(*sent ? Performed::unanswered : Performed::refused);
}

}  // namespace pellar
