#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/shared/panel/KeyOwner.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {
namespace {

using Words = std::vector<std::string>;

// Panels, fields and lists that write down what they are told.
class Keys : public testing::Test {
 protected:
  struct Panel final : KeyPanel {
    Panel(Words& heard, std::string called) : words(heard), name(std::move(called)) {}
    void keyEnded() override { words.push_back(name + " is key no more"); }
    void tellKeyEnded() override { words.push_back(name + " tells it"); }
    Words& words;
    std::string name;
  };
  struct Field final : KeyField {
    explicit Field(Words& heard) : words(heard) {}
    void beginEditing() override { words.emplace_back("editing"); }
    void endEditing() override { words.emplace_back("edited"); }
    Words& words;
  };
  struct List final : KeyList {
    void focusChanged() override { ++changes; }
    bool keyDown(std::uint16_t keyCode) override {
      codes.push_back(keyCode);
      return takesKeys;
    }
    int changes = 0;
    std::vector<int> codes;
    bool takesKeys = true;
  };

  Words happened() { return std::exchange(words, {}); }

  Words words;
  SimMainLoop loop;
  KeyOwner keys{loop};
  Panel strip{words, "strip"};
  Panel other{words, "other"};
  Field field{words};
  List list;
};

TEST_F(Keys, AFieldIsEditedWhileItsPanelIsKey) {
  keys.focus(field, strip);
  EXPECT_EQ(happened(), Words{});
  EXPECT_TRUE(keys.isFirstResponder(field));
  keys.makeKey(strip);
  EXPECT_EQ(happened(), Words{"editing"});
  keys.resign(strip);
  EXPECT_EQ(happened(), (Words{"edited", "strip is key no more", "strip tells it"}));
  EXPECT_TRUE(keys.isFirstResponder(field)) << "for the next time";
  keys.makeKey(strip);
  EXPECT_EQ(happened(), Words{"editing"});
}

TEST_F(Keys, AnotherKeyPanelIsToldOfFromTheLoop) {
  keys.makeKey(strip);
  keys.makeKey(other);
  EXPECT_EQ(happened(), Words{"strip is key no more"});
  loop.runUntilIdle();
  EXPECT_EQ(happened(), Words{"strip tells it"});
  EXPECT_TRUE(keys.isKey(other));
}

TEST_F(Keys, APanelThatLeavesTheScreenIsKeyNoMore) {
  keys.makeKey(strip);
  keys.panelLeftScreen(other);
  EXPECT_TRUE(keys.isKey(strip));
  keys.panelLeftScreen(strip);
  EXPECT_EQ(keys.keyPanel(), nullptr);
  EXPECT_EQ(happened(), Words{"strip is key no more"});
  loop.runUntilIdle();
  EXPECT_EQ(happened(), Words{"strip tells it"});
}

TEST_F(Keys, APanelThatIsGoneTellsNothing) {
  keys.makeKey(strip);
  keys.loseKey();
  keys.panelEnded(strip);
  happened();
  loop.runUntilIdle();
  EXPECT_EQ(happened(), Words{});
}

TEST_F(Keys, AHiddenFieldIsNoFirstResponder) {
  keys.makeKey(strip);
  keys.focus(field, strip);
  keys.fieldHidden(field);
  EXPECT_EQ(happened(), (Words{"editing", "edited"}));
  EXPECT_FALSE(keys.isFirstResponder(field));
  EXPECT_EQ(keys.editedField(), nullptr);
}

TEST_F(Keys, AListHasTheKeysBeforeTheField) {
  keys.makeKey(strip);
  keys.focus(field, strip);
  keys.focus(list, other);
  EXPECT_TRUE(keys.offerToList(125));
  EXPECT_TRUE(keys.hasFocus(list));
  list.takesKeys = false;
  EXPECT_FALSE(keys.offerToList(53));
  EXPECT_FALSE(keys.hasFocus(list));
  EXPECT_EQ(list.codes, (std::vector<int>{125, 53}));
  EXPECT_EQ(list.changes, 2);
  EXPECT_FALSE(keys.offerToList(125));
  EXPECT_EQ(list.codes.size(), 2U) << "it is the field's";
}

TEST_F(Keys, AKeyThatNoListKnowsIsTheFields) {
  keys.makeKey(strip);
  keys.focus(list, other);
  EXPECT_FALSE(keys.offerToList(std::nullopt));
  EXPECT_FALSE(keys.hasFocus(list));
  EXPECT_TRUE(list.codes.empty());
}

TEST_F(Keys, WithoutAKeyPanelAListIsOfferedNothing) {
  keys.focus(list, other);
  EXPECT_FALSE(keys.offerToList(125));
  EXPECT_TRUE(list.codes.empty());
}

TEST_F(Keys, AListLosesTheFocus) {
  const auto focus = [this] {
    keys.makeKey(strip);
    keys.focus(list, other);
    ASSERT_TRUE(keys.hasFocus(list));
  };
  focus();
  keys.focus(field, strip);
  EXPECT_FALSE(keys.hasFocus(list)) << "to a field";
  focus();
  keys.clearFirstResponder(strip);
  EXPECT_FALSE(keys.hasFocus(list)) << "with the first responder";
  focus();
  keys.resign(strip);
  EXPECT_FALSE(keys.hasFocus(list)) << "with the key panel";
  focus();
  keys.panelLeftScreen(other);
  EXPECT_FALSE(keys.hasFocus(list)) << "with its own panel";
  focus();
  keys.listEnded(list);
  EXPECT_FALSE(keys.offerToList(125)) << "as it ends";
  focus();
  keys.clearFirstResponder(other);
  EXPECT_TRUE(keys.hasFocus(list)) << "not by what another panel does";
}

TEST_F(Keys, AListMayBeDeletedByItsKey) {
  struct Doomed final : KeyList {
    explicit Doomed(KeyOwner& owner) : keys(owner) {}
    ~Doomed() override { keys.listEnded(*this); }
    void focusChanged() override {}
    bool keyDown(std::uint16_t) override {
      self.reset();
      return false;
    }
    KeyOwner& keys;
    std::unique_ptr<Doomed> self;
  };
  auto doomed = std::make_unique<Doomed>(keys);
  Doomed& reference = *doomed;
  reference.self = std::move(doomed);
  keys.makeKey(strip);
  keys.focus(reference, other);
  EXPECT_FALSE(keys.offerToList(125));
  EXPECT_FALSE(keys.aListHasFocus());
}

}  // namespace
}  // namespace pellar
