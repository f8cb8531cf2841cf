#import <AppKit/AppKit.h>

#include "platform/Pasteboard.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

class MacPasteboardTest : public ContractTest {};

TEST_F(MacPasteboardTest, ReplacesWhateverItHeld) {
  [NSPasteboard.generalPasteboard clearContents];
  [NSPasteboard.generalPasteboard setString:@"<b>old</b>" forType:NSPasteboardTypeHTML];
  world().platform().pasteboard.setString("new");
  EXPECT_EQ(world().pasted(), "new");
  EXPECT_TRUE([NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeHTML] == nil);
}

}  // namespace pellar::contract
