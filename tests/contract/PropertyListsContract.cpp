#include <filesystem>
#include <fstream>
#include <string>

#include "platform/PropertyLists.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class PropertyListsContract : public ContractTest {
 protected:
  using Value = PropertyListValue;

  std::optional<Value::Dictionary> read(const std::string& content) {
    const auto file = folder / "list.plist";
    std::ofstream(file, std::ios::binary) << content;
    return world().platform().propertyLists.read(file);
  }
  static std::string xml(const std::string& value) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + value + "</plist>";
  }
  // A binary list of {"a": "b", "on": true}: five objects of two bytes or less, one byte an offset.
  static std::string binary() {
    using namespace std::string_literals;
    return "bplist00\xD2\x01\x03\x02\x04\x51"s + "a\x51"s + "b\x52"s + "on\x09"s + "\x08\x0D\x0F\x11\x14"s +
           std::string(6, '\0') + "\x01\x01"s + std::string(7, '\0') + "\x05"s + std::string(8, '\0') +
           std::string(7, '\0') + "\x15"s;
  }

  TemporaryFolder folder;
};

TEST_F(PropertyListsContract, EveryKindOfValueIsRead) {
  const auto list =
      read(xml("<dict><key>yes</key><true/><key>no</key><false/><key>seven</key><integer>7</integer>"
               "<key>minus</key><integer>-7</integer><key>half</key><real>0.5</real>"
               "<key>text</key><string>\xC3\x9C &amp; more</string><key>date</key>"
               "<date>2024-05-01T00:00:01Z</date><key>data</key><data>AP8=</data>"
               "<key>array</key><array><integer>1</integer><string>two</string></array>"
               "<key>dictionary</key><dict><key>inner</key><true/></dict></dict>"));
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(list->size(), 10U);
  EXPECT_EQ(list->at("yes"), Value{true});
  EXPECT_EQ(list->at("no"), Value{false});
  EXPECT_EQ(list->at("seven"), Value{std::int64_t{7}});
  EXPECT_EQ(list->at("minus"), Value{std::int64_t{-7}});
  EXPECT_EQ(list->at("half"), Value{0.5});
  EXPECT_EQ(list->at("text"), Value{std::string("\xC3\x9C & more")});
  EXPECT_EQ(list->at("date"), Value{PropertyListDate{1'714'521'601}});
  EXPECT_EQ(list->at("data"), (Value{Value::Data{std::byte{0x00}, std::byte{0xFF}}}));
  EXPECT_EQ(list->at("array"), (Value{Value::Array{{std::int64_t{1}}, {std::string("two")}}}));
  EXPECT_EQ(list->at("dictionary"), (Value{Value::Dictionary{{"inner", {true}}}}));
}

TEST_F(PropertyListsContract, BinaryListsAreReadToo) {
  const auto list = read(binary());
  ASSERT_TRUE(list.has_value());
  EXPECT_EQ(*list, (Value::Dictionary{{"a", {std::string("b")}}, {"on", {true}}}));
}

TEST_F(PropertyListsContract, AnEmptyDictionaryIsNotAbsent) {
  EXPECT_EQ(read(xml("<dict/>")), Value::Dictionary());
}

TEST_F(PropertyListsContract, WhatIsNotThereCannotBeReadOrIsNoDictionaryIsAbsent) {
  auto& lists = world().platform().propertyLists;
  EXPECT_EQ(lists.read(folder / "nothing.plist"), std::nullopt);
  EXPECT_EQ(lists.read(folder.path()), std::nullopt);
  EXPECT_EQ(read(""), std::nullopt);
  EXPECT_EQ(read("Dear reader"), std::nullopt);
  EXPECT_EQ(read(xml("<array/>")), std::nullopt);
  EXPECT_EQ(read(xml("<dict><key>a</key>")), std::nullopt);
  EXPECT_EQ(read(binary().substr(0, 30)), std::nullopt);
}

TEST_F(PropertyListsContract, AValueInsideItselfIsAbsent) {
  auto list = binary();
  list[12] = '\0';  // the second value is the dictionary
  EXPECT_EQ(read(list), std::nullopt);
}

TEST_F(PropertyListsContract, AFileTooLargeToWaitForIsAbsent) {
  const auto file = folder / "large.plist";
  std::ofstream(file) << xml("<dict/>");
  std::filesystem::resize_file(file, std::uintmax_t{1} << 36U);
  EXPECT_EQ(world().platform().propertyLists.read(file), std::nullopt);
}

}  // namespace pellar::contract
