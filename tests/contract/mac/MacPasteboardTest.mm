#import <AppKit/AppKit.h>

#include "platform/Pasteboard.h"
#include "platform/mac/Conversions.h"
#include "tests/contract/ContractTest.h"

namespace pellar::contract {

// Uses the pasteboard of whoever runs the tests, and leaves the text on it as it was.
class MacPasteboardTest : public ContractTest {
 protected:
  void TearDown() override {
    [NSPasteboard.generalPasteboard clearContents];
    if (before != nil) [NSPasteboard.generalPasteboard setString:before forType:NSPasteboardTypeString];
  }
  static std::string pasted() {
    return fromNSString([NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeString]);
  }

  NSString* before = [NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeString];
};

TEST_F(MacPasteboardTest, HoldsTheTextItIsGiven) {
  world().platform().pasteboard.setString("/Users/ann/\u00dcbersicht.docx");
  EXPECT_EQ(pasted(), "/Users/ann/\u00dcbersicht.docx");
}

TEST_F(MacPasteboardTest, ReplacesWhateverItHeld) {
  [NSPasteboard.generalPasteboard clearContents];
  [NSPasteboard.generalPasteboard setString:@"<b>old</b>" forType:NSPasteboardTypeHTML];
  world().platform().pasteboard.setString("new");
  EXPECT_EQ(pasted(), "new");
  EXPECT_TRUE([NSPasteboard.generalPasteboard stringForType:NSPasteboardTypeHTML] == nil);
}

}  // namespace pellar::contract
