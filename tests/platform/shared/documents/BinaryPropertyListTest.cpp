#include <gtest/gtest.h>

#include "platform/shared/documents/BinaryPropertyList.h"
#include "tests/support/PropertyListFile.h"

namespace pellar {
namespace {

using test::bigEndian;
using test::BinaryList;

constexpr int deep = 8;

// A list whose root is an array that holds an array and so on, that many in all.
std::string nested(int levels) {
  BinaryList list;
  auto inner = list.array({});
  for (int i = 1; i < levels; ++i) inner = list.array({inner});
  return list.bytes(inner);
}

TEST(BinaryPropertyList, TheDepthThatIsAllowedIsAllowed) {
  EXPECT_TRUE(BinaryPropertyList::isSafeToParse(nested(deep), deep));
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse(nested(deep + 1), deep));
}

TEST(BinaryPropertyList, AValueReachedFirstNearTheTopCountsWhereItIsDeepest) {
  BinaryList list;
  auto inner = list.array({});
  for (int i = 1; i < deep - 1; ++i) inner = list.array({inner});
  const auto wrapped = list.array({inner});
  const auto shallow = list.bytes(list.array({inner}));
  EXPECT_TRUE(BinaryPropertyList::isSafeToParse(shallow, deep));
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse(list.bytes(list.array({inner, wrapped})), deep));
}

TEST(BinaryPropertyList, EveryKindOfValueIsKnown) {
  BinaryList list;
  std::vector<std::uint32_t> items{list.add("\x08"),
                                   list.add("\x09"),
                                   list.add("\x10\x07"),
                                   list.add("\x13" + bigEndian(1U << 30U, 8)),
                                   list.add("\x23" + bigEndian(0, 8)),
                                   list.add("\x33" + bigEndian(0, 8)),
                                   list.add(BinaryList::marker(0x4, 3) + "abc"),
                                   list.text("short"),
                                   list.text(std::string(300, 'x')),
                                   list.add(BinaryList::marker(0x6, 2) + std::string(4, '\x20'))};
  items.push_back(list.array({}));
  items.push_back(list.dictionary({7, 0}));
  EXPECT_TRUE(BinaryPropertyList::isSafeToParse(list.bytes(list.array(items)), deep));
}

TEST(BinaryPropertyList, NumbersThatPointOutsideAreRefused) {
  BinaryList list;
  const auto good = list.bytes(list.array({list.add("\x08")}));
  ASSERT_TRUE(BinaryPropertyList::isSafeToParse(good, deep));
  const auto with = [&](std::size_t place, std::uint64_t number, int width) {
    auto text = good;
    text.replace(good.size() - 32 + place, static_cast<std::size_t>(width), bigEndian(number, width));
    return BinaryPropertyList::isSafeToParse(text, deep);
  };
  constexpr auto huge = ~std::uint64_t{0};
  for (const auto width : {0U, 9U, 255U}) {
    EXPECT_FALSE(with(6, width, 1)) << "offsets " << width << " wide";
    EXPECT_FALSE(with(7, width, 1)) << "references " << width << " wide";
  }
  for (const auto number : {huge, huge / 2, std::uint64_t{3}}) {
    EXPECT_FALSE(with(8, number, 8)) << number << " values";
    EXPECT_FALSE(with(16, number, 8)) << "root " << number;
  }
  EXPECT_FALSE(with(24, huge, 8));
  EXPECT_FALSE(with(24, good.size(), 8));
  EXPECT_FALSE(with(24, 0, 8));
}

TEST(BinaryPropertyList, CountsBeyondTheFileAreRefused) {
  for (const unsigned kind : {0x4U, 0x5U, 0x6U, 0xAU, 0xCU, 0xDU}) {
    for (const std::uint64_t count : {std::uint64_t{5'000}, ~std::uint64_t{0}, std::uint64_t{1} << 63U}) {
      BinaryList list;
      EXPECT_FALSE(
          BinaryPropertyList::isSafeToParse(list.bytes(list.add(BinaryList::marker(kind, count))), deep))
          << "kind " << kind << ", count " << count;
    }
  }
  BinaryList list;
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse(list.bytes(list.add("\xAF")), deep)) << "no count at all";
}

TEST(BinaryPropertyList, OtherTextIsRefused) {
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse("", deep));
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse("bplist00", deep));
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse("bplist16" + std::string(100, '\0'), deep));
  EXPECT_FALSE(BinaryPropertyList::isSafeToParse(std::string(100, 'x'), deep));
}

}  // namespace
}  // namespace pellar
