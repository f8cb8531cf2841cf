// Programs that answer what they should not.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "platform/linux/menus/AtSpiTree.h"
#include "tests/platform/linux/fuzz/LyingBus.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;
using test::BusBytes;
using test::BusCall;

// One program with a window of one menu bar, on a bus on which each answer can be replaced.
class AtSpiTreeTest : public testing::Test {
 protected:
  struct Values {
    std::string signature;
    BusBytes bytes;
  };

  AtSpiTreeTest() { setenv(variable, bus.address().c_str(), 1); }
  ~AtSpiTreeTest() override { setenv(variable, "disabled:", 1); }

  static Values text(const std::string& value) {
    Values values{"s", {}};
    values.bytes.text(value);
    return values;
  }
  static Values number(std::uint32_t value) {
    Values values{"u", {}};
    values.bytes.number(value);
    return values;
  }
  // A list of one object.
  static Values object(const std::string& bus, const std::string& path) {
    Values values{"a(so)", {}};
    values.bytes.number(0);
    values.bytes.align(8);
    const auto start = values.bytes.size();
    values.bytes.text(bus);
    values.bytes.text(path);
    values.bytes.setNumber(0, static_cast<std::uint32_t>(values.bytes.size() - start));
    return values;
  }
  // A menu whose rows are each the menu itself, as a section.
  static Values menuInsideItself(int rows) {
    Values values{"a(uuaa{sv})", {}};
    BusBytes& bytes = values.bytes;
    bytes.number(0);
    bytes.align(8);
    const auto start = bytes.size();
    bytes.number(0);
    bytes.number(0);
    const auto rowsPlace = bytes.size();
    bytes.number(0);
    const auto firstRow = bytes.size();
    for (int row = 0; row < rows; ++row) {
      bytes.align(4);
      const auto rowPlace = bytes.size();
      bytes.number(0);
      bytes.align(8);
      const auto pair = bytes.size();
      bytes.text(":section");
      bytes.signature("(uu)");
      bytes.align(8);
      bytes.number(0);
      bytes.number(0);
      bytes.setNumber(rowPlace, static_cast<std::uint32_t>(bytes.size() - pair));
    }
    bytes.setNumber(rowsPlace, static_cast<std::uint32_t>(bytes.size() - firstRow));
    bytes.setNumber(0, static_cast<std::uint32_t>(bytes.size() - start));
    return values;
  }

  [[nodiscard]] std::optional<AtSpiObject> menuBar() {
    const AtSpiWindow window{4711, "Report", {100, 50, 610, 425}, true, exported};
    return tree.menuBar(window, AtSpiBus::Clock::now() + 10s);
  }

  std::optional<ExportedMenuBar> exported;
  std::map<std::string, Values> answers{{"GetConnectionUnixProcessID", number(4711)}};

 private:
  static constexpr const char* variable = "DBUS_SESSION_BUS_ADDRESS";

  std::string answer(const BusCall& call) {
    const auto values = valuesFor(call);
    return test::answerTo(call, values.signature, values.bytes);
  }
  Values valuesFor(const BusCall& call) {
    if (call.member == "Hello") return text(":1.1");
    if (call.member == "GetAddress") return text(bus.address());
    const auto found = answers.find(call.member);
    if (found != answers.end()) return found->second;
    if (call.member == "GetChildren") return object(":1.9", "/program");
    // Of the program's window first, then of what is in it.
    if (call.member == "GetRole") return number(std::exchange(role, menuBarRole));
    return {};
  }

  static constexpr std::uint32_t frameRole = 23;
  static constexpr std::uint32_t menuBarRole = 34;
  std::uint32_t role = frameRole;
  test::LyingBus bus{[this](const BusCall& call) { return answer(call); }};

 protected:
  AtSpiTree tree;  // depends-on: bus
};

TEST_F(AtSpiTreeTest, AProgramThatAnswersRightHasAMenuBar) {
  EXPECT_TRUE(menuBar());
}

TEST_F(AtSpiTreeTest, AProgramWithAnImpossibleNameDoesNotEndPellar) {
  for (const char* name : {"", ":", "label", ":1..9", "9.9", "a b.c", ":1.ü"}) {
    answers.insert_or_assign("GetChildren", object(name, "/program"));
    EXPECT_FALSE(menuBar()) << name;
  }
  exported = ExportedMenuBar{"not a name", "/menus", "/window", "", ""};
  EXPECT_FALSE(menuBar());
  exported = ExportedMenuBar{":1.9", "menus//of a window/", "/window", "", ""};
  EXPECT_FALSE(menuBar());
}

TEST_F(AtSpiTreeTest, AnAnswerOfAnotherKindDoesNotEndPellar) {
  Values numbers{"au", {}};
  numbers.bytes.number(8);
  numbers.bytes.number(1);
  numbers.bytes.number(2);
  answers.insert_or_assign("GetChildren", numbers);
  EXPECT_FALSE(menuBar());
  answers.insert_or_assign("Start", numbers);
  exported = ExportedMenuBar{":1.9", "/menus", "/window", "", ""};
  EXPECT_FALSE(menuBar());
}

TEST_F(AtSpiTreeTest, AMenuMadeOfItselfIsGivenUpForTheOneOnTheBus) {
  answers.insert_or_assign("Start", menuInsideItself(100));
  exported = ExportedMenuBar{":1.9", "/menus", "/window", "", ""};
  const auto bar = menuBar();
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->exported, nullptr);
}

}  // namespace
}  // namespace pellar
