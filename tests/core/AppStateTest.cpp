#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "core/AppState.h"

namespace pellar {
namespace {

std::string path(int index) {
  return "/Users/ann/" + std::to_string(index) + ".docx";
}

TEST(TagColor, NamesAreInTheirOrderAndFoundAgain) {
  const std::array<std::string_view, 6> names{"red", "orange", "yellow", "green", "blue", "purple"};
  ASSERT_EQ(allTagColors.size(), names.size());
  for (std::size_t index = 0; index < names.size(); ++index) {
    EXPECT_EQ(rawValue(allTagColors[index]), names[index]);
    EXPECT_EQ(tagColorWithRawValue(names[index]), allTagColors[index]);
  }
  EXPECT_EQ(tagColorWithRawValue("Red"), std::nullopt);
  EXPECT_EQ(tagColorWithRawValue("pink"), std::nullopt);
  EXPECT_EQ(tagColorWithRawValue(""), std::nullopt);
}

TEST(AppState, StartsEmpty) {
  const AppState state;
  EXPECT_TRUE(state.tags.empty());
  EXPECT_TRUE(state.groups.empty());
  EXPECT_TRUE(state.recent.empty());
  EXPECT_TRUE(state.recentApp.empty());
  EXPECT_EQ(state.settings, Settings{});
}

TEST(AppState, NamesTheColourUnderAKeyUnlessThereIsNoneOrNoneThatIsKnown) {
  AppState state;
  EXPECT_EQ(state.tag("/a.docx"), std::nullopt);
  state.tags = {{"/a.docx", "blue"}, {"/b.docx", "crimson"}};
  EXPECT_EQ(state.tag("/a.docx"), TagColor::blue);
  EXPECT_EQ(state.tag("/b.docx"), std::nullopt);
  EXPECT_EQ(state.tag("/c.docx"), std::nullopt);
}

TEST(TouchRecent, RecordsTheTimeAndTheApplication) {
  AppState state;
  state.touchRecent("/a.docx", "word", 100);
  EXPECT_EQ(state.recent, (NameMap<double>{{"/a.docx", 100}}));
  EXPECT_EQ(state.recentApp, (NameMap<std::string>{{"/a.docx", "word"}}));
}

TEST(TouchRecent, APathAlreadyThereOnlyGetsANewTime) {
  AppState state;
  state.touchRecent("/a.docx", "word", 100);
  state.touchRecent("/a.docx", "com.example.editor", 50);
  EXPECT_EQ(state.recent, (NameMap<double>{{"/a.docx", 50}}));
  EXPECT_EQ(state.recentApp["/a.docx"], "com.example.editor");
}

TEST(TouchRecent, AFileSpeltInAnotherWayIsTheSameFileUnderItsLastSpelling) {
  AppState state;
  const std::string composed = "/é.docx";
  const std::string decomposed = "/e\u0301.docx";
  state.touchRecent(composed, "word", 100);
  state.touchRecent(decomposed, std::nullopt, 200);
  EXPECT_EQ(state.recent, (NameMap<double>{{decomposed, 200}}));
  EXPECT_EQ(state.recentApp[decomposed], "word");
}

TEST(TouchRecent, WithoutAnApplicationTheEarlierOneStays) {
  AppState state;
  state.touchRecent("/a.docx", "word", 100);
  state.touchRecent("/a.docx", std::nullopt, 200);
  state.touchRecent("/b.docx", std::nullopt, 200);
  EXPECT_EQ(state.recentApp, (NameMap<std::string>{{"/a.docx", "word"}}));
}

TEST(TouchRecent, TheThreeHundredAndFirstFileDropsTheOldest) {
  AppState state;
  for (int index = 0; index < 300; ++index) state.touchRecent(path(index), "word", index);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_TRUE(state.recent.contains(path(0)));
  state.touchRecent(path(300), "word", 300);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_EQ(state.recentApp.size(), 300U);
  EXPECT_FALSE(state.recent.contains(path(0)));
  EXPECT_FALSE(state.recentApp.contains(path(0)));
  EXPECT_TRUE(state.recent.contains(path(1)));
  EXPECT_TRUE(state.recent.contains(path(300)));
}

TEST(TouchRecent, AnOverfullRecordIsCutToTheNewest) {
  AppState state;
  for (int index = 0; index < 5000; ++index) state.recent[path(index)] = index;
  state.recentApp["/elsewhere"] = "word";
  state.touchRecent(path(0), "word", 9999);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_TRUE(state.recent.contains(path(0)));
  EXPECT_TRUE(state.recent.contains(path(4999)));
  EXPECT_TRUE(state.recent.contains(path(4701)));
  EXPECT_FALSE(state.recent.contains(path(4700)));
  EXPECT_TRUE(state.recentApp.contains("/elsewhere"));
}

// The clock was set back since the others were used.
TEST(TouchRecent, AFileUsedLongBeforeAllOthersIsItselfTheOneThatGoes) {
  AppState state;
  for (int index = 0; index < 300; ++index) state.touchRecent(path(index), "word", 1000 + index);
  state.touchRecent("/new", "word", 1);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_FALSE(state.recent.contains("/new"));
  EXPECT_FALSE(state.recentApp.contains("/new"));
  EXPECT_TRUE(state.recent.contains(path(0)));
}

TEST(TouchRecent, AnApplicationWithoutAnIdentifierIsRecordedLikeAnother) {
  AppState state;
  state.touchRecent("/a.docx", "word", 100);
  state.touchRecent("/a.docx", "", 200);
  EXPECT_EQ(state.recentApp, (NameMap<std::string>{{"/a.docx", ""}}));
}

TEST(TouchRecent, EqualTimesStillLeaveThreeHundred) {
  AppState state;
  for (int index = 0; index < 400; ++index) state.touchRecent(path(index), "word", 7);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_EQ(state.recentApp.size(), 300U);
}

TEST(TouchRecent, ATimeThatIsNoNumberIsTheFirstToGo) {
  AppState state;
  for (int index = 0; index < 299; ++index) state.touchRecent(path(index), "word", index);
  state.touchRecent("/strange", "word", std::numeric_limits<double>::quiet_NaN());
  state.touchRecent("/new", "word", 1000);
  EXPECT_EQ(state.recent.size(), 300U);
  EXPECT_FALSE(state.recent.contains("/strange"));
  EXPECT_TRUE(state.recent.contains(path(0)));
}

}  // namespace
}  // namespace pellar
