#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include "platform/LoginItem.h"
#include "platform/ScriptRunner.h"
#include "platform/UserNotifications.h"
#include "platform/mac/applications/AccessibilityChanges.h"
#include "platform/mac/system/MacApplication.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

// Services that answer a program without a bundle, as this one is, too.
class MacServicesTest : public ContractTest {
 protected:
  std::optional<ScriptDescriptor> run(const std::string& source) {
    return world().platform().scripts.run(source).descriptor;
  }
};

TEST_F(MacServicesTest, AScriptReturnsTextNumbersAndLists) {
  EXPECT_EQ(run("return \"Plan \" & \"B\""), ScriptDescriptor{std::string("Plan B")});
  EXPECT_EQ(run("return 6 * 7"), ScriptDescriptor{std::int32_t{42}});
  const auto list = run("return {\"one\", 2}");
  ASSERT_TRUE(list.has_value());
  ASSERT_EQ(list->items().size(), 2U);
  EXPECT_EQ(list->items()[0].stringValue(), "one");
  EXPECT_EQ(list->items()[1].stringValue(), "2");
}

TEST_F(MacServicesTest, AScriptThatFailsSaysWhy) {
  for (const char* source : {"this is no script at all)", "error \"out of paper\""}) {
    const auto result = world().platform().scripts.run(source);
    EXPECT_FALSE(result.descriptor.has_value()) << source;
    ASSERT_TRUE(result.error.has_value()) << source;
    EXPECT_FALSE(result.error->empty());
  }
}

TEST_F(MacServicesTest, NotificationsAreRefusedWithoutABundle) {
  std::vector<bool> answers;
  const auto subscription = world().platform().notifications.requestAuthorization(
      [&answers](bool granted) { answers.push_back(granted); });
  EXPECT_TRUE(answers.empty()) << "not inside the call";
  ASSERT_TRUE(wait([&answers] { return !answers.empty(); }));
  EXPECT_EQ(answers, std::vector<bool>{false});
  world().platform().notifications.add({"update", "Title", "Body"});
}

TEST_F(MacServicesTest, ADroppedQuestionIsNotAnswered) {
  int answers = 0;
  {
    const auto dropped =
        world().platform().notifications.requestAuthorization([&answers](bool) { ++answers; });
  }
  letPass(std::chrono::milliseconds(50));
  EXPECT_EQ(answers, 0);
}

TEST_F(MacServicesTest, AProgramWithoutABundleDoesNotStartAtLogin) {
  EXPECT_NE(world().platform().loginItem.status(), LoginItemStatus::enabled);
}

TEST_F(MacServicesTest, WithoutABundleThereIsNoVersion) {
  EXPECT_EQ(macBundleInfo().shortVersion, std::nullopt);
  EXPECT_EQ(workspace().ownBundleId(), std::nullopt);
}

TEST_F(MacServicesTest, TheWorkspaceKnowsTheFinder) {
  EXPECT_TRUE(workspace().displayName("com.apple.finder").has_value());
  EXPECT_EQ(workspace().displayName("app.pellar.nobody"), std::nullopt);
  EXPECT_FALSE(workspace().isRunning("app.pellar.nobody"));
}

// What the system posts when the user changes the list of permissions; whoever hears it looks at the list
// again.
TEST_F(MacServicesTest, HearsOfChangedPermissionsUntilItIsDropped) {
  const auto change = [] {
    [NSDistributedNotificationCenter.defaultCenter postNotificationName:@"com.apple.accessibility.api"
                                                                 object:nil
                                                               userInfo:nil
                                                     deliverImmediately:YES];
  };
  int heard = 0;
  int kept = 0;
  Subscription self = onAccessibilityChanged([&] {
    ++heard;
    self.cancel();
  });
  const auto other = onAccessibilityChanged([&kept] { ++kept; });
  EXPECT_EQ(heard, 0);
  change();
  ASSERT_TRUE(wait([&kept] { return kept == 1; }));
  change();
  ASSERT_TRUE(wait([&kept] { return kept == 2; }));
  EXPECT_EQ(heard, 1);
}

TEST_F(MacServicesTest, FoldersAreWholePaths) {
  const UserFolders& folders = world().platform().folders;
  EXPECT_TRUE(folders.home.is_absolute());
  EXPECT_TRUE(std::filesystem::is_directory(folders.home));
  EXPECT_EQ(folders.applicationSupport, folders.home / "Library/Application Support");
  EXPECT_EQ(folders.logFile, folders.home / "Library/Logs/Pellar.log");
  EXPECT_TRUE(std::filesystem::is_directory(folders.logFile.parent_path()));
}

}  // namespace pellar::contract
