#import "platform/mac/popups/NativeMenu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/mac/system/Conversions.h"

namespace pellar::contract {

class NativeMenuTest : public ::testing::Test {
 protected:
  void make(const Menu& menu) {
    native = nativeMenu(menu, [](const std::function<void()>& handler) {
      if (handler) handler();
    });
  }
  [[nodiscard]] NSMenuItem* item(NSInteger index) const { return [native itemAtIndex:index]; }
  [[nodiscard]] std::string title(NSInteger index) const { return fromNSString(item(index).title); }

  NSMenu* native = nil;
};

TEST_F(NativeMenuTest, ItemsStandInOrderWithTheirTitles) {
  make({ClosureItem{.title = "Save & close_all", .handler = {}}, MenuSeparator{},
        Submenu{"Tag", {ClosureItem{.title = "Red", .handler = {}}}}});
  ASSERT_EQ(native.numberOfItems, 3);
  EXPECT_EQ(title(0), "Save & close_all");
  EXPECT_TRUE(item(1).separatorItem);
  EXPECT_EQ(title(2), "Tag");
  ASSERT_EQ(item(2).submenu.numberOfItems, 1);
  EXPECT_EQ(fromNSString([item(2).submenu itemAtIndex:0].title), "Red");
}

TEST_F(NativeMenuTest, AnAbsurdTitleShowsItsBeginningAndItsEnd) {
  const std::string absurd = "Update to " + std::string(1 << 20, '9') + " \u2014 Download";
  make({ClosureItem{.title = absurd, .handler = {}}, Submenu{absurd, {}}});
  for (const NSInteger index : {0, 1}) {
    EXPECT_TRUE(title(index).starts_with("Update to 999"));
    EXPECT_TRUE(title(index).ends_with("999 \u2014 Download"));
    EXPECT_LT(title(index).size(), 1100U);
  }
}

TEST_F(NativeMenuTest, ATitleWithoutEndIsCut) {
  std::string endless = "a";
  for (int mark = 0; mark < 100'000; ++mark) endless += "\u0301";
  make({ClosureItem{.title = endless, .handler = {}}});
  EXPECT_LE(item(0).title.length, 1002U);
}

TEST_F(NativeMenuTest, WhatIsChosenWhileAQuestionIsOpenIsDoneAtOnce) {
  for (NSRunLoopMode mode : {NSDefaultRunLoopMode, NSModalPanelRunLoopMode}) {
    __block bool done = false;
    performAfterTracking(^{
      done = true;
    });
    CFRunLoopRunInMode((__bridge CFStringRef)NSEventTrackingRunLoopMode, 0.01, false);
    EXPECT_FALSE(done) << "the menu is still tracked";
    CFRunLoopRunInMode((__bridge CFStringRef)mode, 0.01, false);
    EXPECT_TRUE(done) << fromNSString(mode);
  }
}

TEST_F(NativeMenuTest, ChosenItemsRunTheirHandlers) {
  std::vector<std::string> chosen;
  make(
      {ClosureItem{.title = "One", .handler = [&chosen] { chosen.emplace_back("one"); }},
       ClosureItem{.title = "Nothing", .handler = {}},
       Submenu{"More", {ClosureItem{.title = "Two", .handler = [&chosen] { chosen.emplace_back("two"); }}}}});
  [native performActionForItemAtIndex:0];
  [native performActionForItemAtIndex:1];
  [item(2).submenu performActionForItemAtIndex:0];
  EXPECT_EQ(chosen, (std::vector<std::string>{"one", "two"}));
}

TEST_F(NativeMenuTest, ItemsSayWhetherTheyAreEnabledAndChecked) {
  make({ClosureItem{.title = "On", .handler = {}, .enabled = true, .checked = true},
        ClosureItem{.title = "Off", .handler = {}, .enabled = false, .checked = false}});
  [native update];
  EXPECT_TRUE(item(0).enabled);
  EXPECT_EQ(item(0).state, NSControlStateValueOn);
  EXPECT_FALSE(item(1).enabled);
  EXPECT_EQ(item(1).state, NSControlStateValueOff);
}

TEST_F(NativeMenuTest, ASwatchIsTwelvePointsWide) {
  make({ClosureItem{.title = "Red", .handler = {}, .swatch = Color::of(SystemColor::red)},
        ClosureItem{.title = "None", .handler = {}}});
  EXPECT_EQ(item(0).image.size.width, 12);
  EXPECT_EQ(item(0).image.size.height, 12);
  EXPECT_TRUE(item(1).image == nil);
}

TEST_F(NativeMenuTest, AProminentItemIsBold) {
  make({ClosureItem{.title = "Update to 2.0", .handler = {}, .prominent = true}});
  NSAttributedString* drawn = item(0).attributedTitle;
  ASSERT_TRUE(drawn != nil);
  EXPECT_EQ(fromNSString(drawn.string), "Update to 2.0");
  const id font = [drawn attribute:NSFontAttributeName atIndex:0 effectiveRange:nil];
  ASSERT_TRUE([font isKindOfClass:NSFont.class]);
  EXPECT_NE(static_cast<NSFont*>(font).fontDescriptor.symbolicTraits & NSFontDescriptorTraitBold, 0U);
}

}  // namespace pellar::contract
