#include "platform/mac/system/MouseButtons.h"

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

#include "tests/contract/ContractTest.h"

namespace pellar::contract {

NSUInteger heldButtons = 0;

// AppKit says what this says is held, since nobody is there to hold anything.
class MacMouseButtonsTest : public ContractTest {
 protected:
  MacMouseButtonsTest()
      : answer(class_getClassMethod(NSEvent.class, @selector(pressedMouseButtons))),
        before(method_setImplementation(answer, imp_implementationWithBlock(^NSUInteger(id) {
                                          return heldButtons;
                                        }))) {}
  ~MacMouseButtonsTest() override { method_setImplementation(answer, before); }

  Method answer;
  IMP before;
};

TEST_F(MacMouseButtonsTest, WithNoButtonHeldItIsDoneAtOnce) {
  heldButtons = 0;
  bool done = false;
  const auto subscription = whenNoButtonIsDown([&done] { done = true; });
  EXPECT_TRUE(done);
}

TEST_F(MacMouseButtonsTest, AHeldButtonIsWaitedForOnce) {
  heldButtons = 1;
  int done = 0;
  const auto subscription = whenNoButtonIsDown([&done] { ++done; });
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(done, 0);
  heldButtons = 0;
  ASSERT_TRUE(wait([&done] { return done == 1; }));
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(done, 1);
}

TEST_F(MacMouseButtonsTest, NobodyIsToldWhoNoLongerWaits) {
  heldButtons = 1;
  int done = 0;
  auto subscription = whenNoButtonIsDown([&done] { ++done; });
  subscription.cancel();
  heldButtons = 0;
  letPass(std::chrono::milliseconds(100));
  EXPECT_EQ(done, 0);
}

}  // namespace pellar::contract
