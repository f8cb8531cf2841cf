#include <QCoreApplication>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <mutex>
#include <string>

#include "core/Utf8.h"
#include "platform/linux/menus/AtSpiTree.h"
#include "tests/platform/linux/fuzz/LyingBus.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using test::BusBytes;
using test::BusCall;

constexpr const char* addressVariable = "DBUS_SESSION_BUS_ADDRESS";

// What the values of an answer are when the program keeps to what is agreed.
const std::map<std::string, std::string, std::less<>> agreed{
    {"GetChildren", "a(so)"},
    {"GetRole", "u"},
    {"Get", "v"},
    {"GetExtents", "(iiii)"},
    {"GetState", "au"},
    {"GetKeyBinding", "s"},
    {"DoAction", "b"},
    {"Describe", "(bgav)"},
    {"Start", "a(uuaa{sv})"},
    {"GetConnectionUnixProcessID", "u"},
};

// A session whose programs answer what an input says.
class LyingSession {
 public:
  LyingSession() { setenv(addressVariable, bus_.address().c_str(), 1); }

  void meet(test::FuzzInput& input) {
    {
      const std::lock_guard lock(mutex_);
      input_ = &input;
    }
    visit();
    const std::lock_guard lock(mutex_);
    input_ = nullptr;
  }

 private:
  // On the bus's thread.
  std::string answerTo(const BusCall& call) {
    const std::lock_guard lock(mutex_);
    if (call.member == "Hello") return textTo(call, ":1.1");
    if (call.member == "GetAddress") return textTo(call, bus_.address());
    const auto shape = agreed.find(call.member);
    if (input_ == nullptr || shape == agreed.end()) return test::answerTo(call, "", {});
    const std::size_t manner = input_->below(8);
    if (manner == 1) return test::errorTo(call);
    const std::string signature = manner == 2 ? test::signatureFrom(*input_) : shape->second;
    BusBytes values;
    values.values(signature, *input_);
    return test::answerTo(call, signature, values);
  }
  static std::string textTo(const BusCall& call, const std::string& text) {
    BusBytes values;
    values.text(text);
    return test::answerTo(call, "s", values);
  }

  // Goes through the menus as "Save all" does, and presses what is there.
  void visit() {
    const auto deadline = AtSpiBus::Clock::now() + 20s;
    AtSpiWindow window{4711, {}, {100, 50, 610, 425}, false, std::nullopt};
    {
      const std::lock_guard lock(mutex_);
      window.title = input_->text();
      window.isOnly = input_->flag();
      if (input_->flag()) window.exported = ExportedMenuBar{":1.9", "/menus", "/window", "/app", ""};
    }
    const auto bar = tree_.menuBar(window, deadline);
    if (!bar) return;
    for (const AtSpiNamed& title : some(tree_.children(*bar, deadline))) {
      const auto menu = tree_.menuOf(title.object, deadline);
      if (!menu) continue;
      for (const AtSpiNamed& item : some(tree_.children(*menu, deadline))) {
        if (item.name && !Utf8::isValid(*item.name)) std::abort();
        static_cast<void>(tree_.isEnabled(item.object, deadline));
        std::atomic<bool> sent = false;
        const auto performed = tree_.press(item.object, deadline, sent);
        if (performed == Performed::done && !sent) std::abort();
      }
    }
  }
  static std::vector<AtSpiNamed> some(std::optional<std::vector<AtSpiNamed>> all) {
    constexpr std::size_t most = 3;
    auto result = std::move(all).value_or(std::vector<AtSpiNamed>());
    if (result.size() > most) result.erase(result.begin() + most, result.end());
    return result;
  }

  std::mutex mutex_;
  test::FuzzInput* input_ = nullptr;
  test::LyingBus bus_{[this](const BusCall& call) { return answerTo(call); }};
  AtSpiTree tree_;  // depends-on: bus_
};

}  // namespace
}  // namespace pellar

// Whatever a program answers about its menus, on the accessibility bus or where it exports them: of the right
// kind or not, it is understood or passed over.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static int argc = 1;
  static char name[] = "fuzz_bus_answer";
  static char* argv[] = {name, nullptr};
  static const QCoreApplication application(argc, argv);
  static pellar::LyingSession session;
  pellar::test::FuzzInput input(data, size);
  session.meet(input);
  return 0;
}
