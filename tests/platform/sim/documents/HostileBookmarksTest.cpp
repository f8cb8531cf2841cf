// Property lists that nobody should have to read.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/sim/documents/PlistPropertyLists.h"
#include "platform/sim/system/TemporaryFolder.h"
#include "tests/support/Files.h"
#include "tests/support/PropertyListFile.h"

namespace pellar {
namespace {

using Dictionary = PropertyListValue::Dictionary;
using test::BinaryList;
using test::binaryList;
using test::bookmark;
using test::xmlList;

class HostileBookmarks : public testing::Test {
 protected:
  std::optional<Dictionary> read(const std::string& content) {
    const auto file = folder / "bookmarks.plist";
    test::put(file, content);
    return lists.read(file);
  }
  static std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
  }
  static std::string good() { return "<dict>" + bookmark("/a.docx", "2024-05-01T12:00:00Z") + "</dict>"; }

  TemporaryFolder folder;
  SimMainLoop mainLoop;
  PlistPropertyLists lists{mainLoop};
};

TEST_F(HostileBookmarks, AnyPrefixOfAListIsReadOrNotButHarmsNothing) {
  for (const auto& whole : {xmlList(good()), binaryList(good())}) {
    ASSERT_TRUE(read(whole).has_value());
    for (std::size_t length = 0; length < whole.size(); ++length) {
      EXPECT_LE(read(whole.substr(0, length)).value_or(Dictionary()).size(), 1U);
    }
    EXPECT_EQ(read(whole.substr(0, whole.size() / 2)), std::nullopt);
  }
}

TEST_F(HostileBookmarks, AnyByteOfABinaryListMayBeWrong) {
  const auto whole = binaryList(good());
  for (std::size_t place = 0; place < whole.size(); ++place) {
    for (const int wrong : {0x00, 0x0F, 0x5F, 0x7F, 0x80, 0xAF, 0xDF, 0xFF}) {
      auto damaged = whole;
      damaged[place] = static_cast<char>(wrong);
      static_cast<void>(read(damaged));
    }
  }
  EXPECT_TRUE(read(whole).has_value());
}

TEST_F(HostileBookmarks, WhatIsNoListOfBookmarksIsNothing) {
  EXPECT_EQ(read(""), std::nullopt);
  EXPECT_EQ(read("Dear reader, this is a letter."), std::nullopt);
  EXPECT_EQ(read(std::string(1000, '\0')), std::nullopt);
  EXPECT_EQ(read("\x7F"
                 "ELF" +
                 std::string(200, '\x01')),
            std::nullopt);
  EXPECT_EQ(read("bplist00"), std::nullopt);
  EXPECT_EQ(read("{\"a\": 1}"), std::nullopt);
  EXPECT_EQ(read(xmlList("<array><string>a</string></array>")), std::nullopt);
  EXPECT_EQ(read(xmlList("<string>a</string>")), std::nullopt);
  EXPECT_EQ(read(binaryList("<array/>")), std::nullopt);
  EXPECT_EQ(lists.read(folder / "none.plist"), std::nullopt);
  EXPECT_EQ(lists.read(folder.path()), std::nullopt);
}

TEST_F(HostileBookmarks, AListInsideItselfIsNothing) {
  BinaryList list;
  EXPECT_EQ(read(list.bytes(list.array({0}))), std::nullopt);

  BinaryList dictionary;
  const auto key = dictionary.text("a");
  EXPECT_EQ(read(dictionary.bytes(dictionary.dictionary({key, 1}))), std::nullopt);

  BinaryList ring;
  const auto name = ring.text("a");
  ring.dictionary({name, 2});
  ring.dictionary({name, 3});
  EXPECT_EQ(read(ring.bytes(ring.dictionary({name, 1}))), std::nullopt);
}

TEST_F(HostileBookmarks, DeepNestingIsNothing) {
  constexpr std::size_t deep = 1'000'000;
  EXPECT_EQ(read(xmlList("<dict><key>a</key>" + repeated("<array>", deep) + repeated("</array>", deep) +
                         "</dict>")),
            std::nullopt);
  EXPECT_EQ(read("<plist>" + repeated("<dict><key>a</key>", 900'000)), std::nullopt) << "never closed";
  EXPECT_EQ(read("<plist>" + repeated("<array><!-- </array> -->", 500'000)), std::nullopt);
  constexpr std::size_t readable = 40'000;
  EXPECT_EQ(read(xmlList("<dict><key>a</key>" + repeated("<array>", readable) +
                         repeated("</array>", readable) + "</dict>")),
            std::nullopt)
      << "few enough to be parsed, too deep to be used";

  BinaryList list;
  const auto key = list.text("a");
  std::uint32_t inner = list.array({});
  for (int i = 0; i < 200'000; ++i) inner = list.array({inner});
  EXPECT_EQ(read(list.bytes(list.dictionary({key, inner}))), std::nullopt);
}

TEST_F(HostileBookmarks, NestingOfAListThatServesAPurposeIsRead) {
  std::string value = "<true/>";
  for (int i = 0; i < PlistPropertyLists::deepestNesting - 2; ++i) value = "<array>" + value + "</array>";
  const auto text = "<dict><key>a</key>" + value + "</dict>";
  EXPECT_TRUE(read(xmlList(text)).has_value());
  EXPECT_TRUE(read(binaryList(text)).has_value());
}

TEST_F(HostileBookmarks, AFewBytesThatStandForAMountainAreNothing) {
  // Each array holds the one before twice.
  BinaryList list;
  const auto key = list.text("a");
  std::uint32_t inner = list.array({});
  for (int i = 0; i < 40; ++i) inner = list.array({inner, inner});
  EXPECT_EQ(read(list.bytes(list.dictionary({key, inner}))), std::nullopt);

  // One long text, named many times.
  BinaryList texts;
  const auto name = texts.text("a");
  const auto longText = texts.text(std::string(1'000'000, 'x'));
  const auto many = texts.array(std::vector<std::uint32_t>(100'000, longText));
  EXPECT_EQ(read(texts.bytes(texts.dictionary({name, many}))), std::nullopt);

  EXPECT_EQ(read("<?xml version=\"1.0\"?><!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
                 "\"&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;\">]><plist><array>&c;</array></plist>"),
            std::nullopt);
}

TEST_F(HostileBookmarks, SharedTextsAreReadInFull) {
  BinaryList list;
  const auto first = list.text("/a.docx");
  const auto second = list.text("/b.docx");
  const auto key = list.text("kLastUsedDateKey");
  const auto entry = list.dictionary({key, first});
  const auto read = this->read(list.bytes(list.dictionary({first, second, entry, entry})));
  ASSERT_TRUE(read.has_value());
  EXPECT_EQ(read->size(), 2U);
  EXPECT_EQ(read->at("/a.docx"), read->at("/b.docx"));
}

TEST_F(HostileBookmarks, AHugeFileIsNotRead) {
  const std::string padding(PlistPropertyLists::largestFile, ' ');
  EXPECT_EQ(read(xmlList(good()) + padding), std::nullopt);
  // One that takes no room on the disk at all.
  const auto sparse = folder / "sparse.plist";
  test::put(sparse, xmlList(good()));
  std::filesystem::resize_file(sparse, std::uintmax_t{1} << 40U);
  EXPECT_EQ(lists.read(sparse), std::nullopt);
}

TEST_F(HostileBookmarks, WhatNeverEndsIsNotRead) {
  const auto pipe = folder / "pipe.plist";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(lists.read(pipe), std::nullopt);
  const auto zero = folder / "zero.plist";
  std::filesystem::create_symlink("/dev/zero", zero);
  EXPECT_EQ(lists.read(zero), std::nullopt);
  const auto loop = folder / "loop.plist";
  std::filesystem::create_symlink(loop, loop);
  EXPECT_EQ(lists.read(loop), std::nullopt);
}

TEST_F(HostileBookmarks, ThousandsOfBookmarksAreRead) {
  std::string entries;
  for (int i = 0; i < 5000; ++i)
    entries +=
        bookmark("file:///Users/ann/Document%20" + std::to_string(i) + ".docx", "2024-05-01T12:00:00Z");
  const auto xml = read(xmlList("<dict>" + entries + "</dict>"));
  ASSERT_TRUE(xml.has_value());
  EXPECT_EQ(xml->size(), 5000U);
  EXPECT_EQ(read(binaryList("<dict>" + entries + "</dict>")), xml);
}

TEST_F(HostileBookmarks, AZeroInAKeyIsNothing) {
  using namespace std::string_literals;
  for (const auto& key : {BinaryList::marker(0x5, 3) + "a\0b"s, BinaryList::marker(0x5, 1) + "\0"s,
                          BinaryList::marker(0x6, 2) + "\0a\0\0"s}) {
    BinaryList list;
    const auto number = list.add(key);
    const auto inner = list.dictionary({number, number});
    EXPECT_EQ(read(list.bytes(inner)), std::nullopt);
    EXPECT_EQ(read(list.bytes(list.dictionary({list.text("a"), inner}))), std::nullopt);
  }
  BinaryList list;
  const auto key = list.add(BinaryList::marker(0x6, 2) + "\0a\x01\0"s);
  EXPECT_EQ(read(list.bytes(list.dictionary({key, list.add("\x09")}))), (Dictionary{{"a\u0100", {true}}}));
  static_cast<void>(read(xmlList("<dict><key>a\0b</key><true/></dict>"s)));
}

TEST_F(HostileBookmarks, KeysThatAreNoTextsAreNothing) {
  BinaryList list;
  const auto number = list.add(std::string("\x10\x07", 2));
  EXPECT_EQ(read(list.bytes(list.dictionary({number, number}))), std::nullopt);
}

}  // namespace
}  // namespace pellar
