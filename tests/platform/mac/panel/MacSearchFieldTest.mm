#include "platform/mac/panel/MacSearchField.h"

#import <QuartzCore/QuartzCore.h>
#import <objc/runtime.h>

#include "platform/Panel.h"
#import "platform/mac/panel/HostedView.h"
#include "platform/mac/panel/MacViewHost.h"
#import "platform/mac/panel/StripSearchField.h"
#include "platform/mac/system/Conversions.h"
#include "tests/contract/ContractTest.h"

// Says while its text is set that a search has ended.
@interface EagerSearchField : StripSearchField
@end

@implementation EagerSearchField

- (void)setStringValue:(NSString*)text {
  super.stringValue = text;
  [static_cast<id<NSSearchFieldDelegate>>(self.delegate) searchFieldDidEndSearching:self];
}

@end

namespace pellar::contract {

// A field in a panel that is not shown, and what AppKit tells its delegate when somebody types.
class MacSearchFieldTest : public ContractTest {
 protected:
  MacSearchFieldTest()
      : panel(world().platform().panels.makePanel({.contentSize = {400, 32}, .canBecomeKey = true})),
        field(panel->host().makeSearchField()) {
    NSView* around = static_cast<MacViewHost&>(panel->host()).native();
    native = static_cast<StripSearchField*>(around.subviews.firstObject);
    field->setOnChange([this] { texts.push_back(field->text()); });
  }
  void TearDown() override { field.reset(); }

  void type(NSString* text) {
    native.stringValue = text;
    [native.delegate
        controlTextDidChange:[NSNotification notificationWithName:NSControlTextDidChangeNotification
                                                           object:native]];
  }
  void pressTheButtonThatEmpties() {
    native.stringValue = @"";
    [native.delegate searchFieldDidEndSearching:native];
  }

  std::unique_ptr<Panel> panel;
  std::unique_ptr<SearchField> field;
  StripSearchField* native;
  std::vector<std::string> texts;  // that the program was told of
};

TEST_F(MacSearchFieldTest, IsSmallDarkAndRoundWithoutAFocusRing) {
  ASSERT_TRUE([native isKindOfClass:StripSearchField.class]);
  EXPECT_EQ(native.font.pointSize, 12);
  EXPECT_EQ(native.controlSize, NSControlSizeSmall);
  EXPECT_EQ(native.focusRingType, NSFocusRingTypeNone);
  EXPECT_TRUE([native.appearance.name isEqualToString:NSAppearanceNameDarkAqua]);
  EXPECT_EQ(native.layer.cornerRadius, 8);
  EXPECT_TRUE([native acceptsFirstMouse:nil]);
}

TEST_F(MacSearchFieldTest, TakesTheFirstClickWhereverItIsHit) {
  field->setFrame({100, 5, 210, 22});
  [native layoutSubtreeIfNeeded];
  for (const CGFloat x : {110, 200}) {
    NSView* hit = [native hitTest:NSMakePoint(x, 16)];
    ASSERT_TRUE(hit != nil);
    EXPECT_TRUE([hit acceptsFirstMouse:nil]) << "the view under the pointer is asked";
  }
}

TEST_F(MacSearchFieldTest, StandsWhereItIsPutAndShowsItsPlaceholder) {
  field->setFrame({100, 5, 210, 22});
  EXPECT_EQ(field->frame(), (ViewRect{100, 5, 210, 22}));
  field->setPlaceholder("Search recent files");
  EXPECT_EQ(fromNSString(native.placeholderString), "Search recent files");
  field->setHidden(true);
  EXPECT_TRUE(field->isHidden());
  EXPECT_TRUE(native.hidden);
}

TEST_F(MacSearchFieldTest, TellsOfTypingAndNotOfATextThatIsSet) {
  type(@"p");
  type(@"pl");
  field->setText("");
  type(@"x");
  EXPECT_EQ(texts, (std::vector<std::string>{"p", "pl", "x"}));
}

TEST_F(MacSearchFieldTest, ASearchThatEndsWhileItIsEmptiedIsNotTyping) {
  type(@"plan");
  object_setClass(native, EagerSearchField.class);
  field->setText("");
  EXPECT_EQ(texts, std::vector<std::string>{"plan"});
}

TEST_F(MacSearchFieldTest, TellsOnceThatItsButtonEmptiedIt) {
  type(@"plan");
  pressTheButtonThatEmpties();
  pressTheButtonThatEmpties();
  EXPECT_EQ(texts, (std::vector<std::string>{"plan", ""}));
}

TEST_F(MacSearchFieldTest, TypingGoesOnWhenItIsFocusedAgain) {
  field->focus();
  NSText* editor = native.currentEditor;
  ASSERT_TRUE(editor != nil);
  [editor insertText:@"pl"];
  field->focus();
  EXPECT_EQ(native.currentEditor.selectedRange.location, 2U);
  EXPECT_EQ(native.currentEditor.selectedRange.length, 0U);
  panel->clearFirstResponder();
  EXPECT_TRUE(native.currentEditor == nil);
  EXPECT_EQ(field->text(), "pl");
}

TEST_F(MacSearchFieldTest, OffersCommandsByTheirSelectors) {
  std::vector<std::string> commands;
  bool takes = true;
  field->setOnCommand([&](const std::string& selector) {
    commands.push_back(selector);
    return takes;
  });
  NSTextView* editor = [[NSTextView alloc] initWithFrame:NSZeroRect];
  EXPECT_TRUE([native.delegate control:native textView:editor doCommandBySelector:@selector(moveDown:)]);
  takes = false;
  EXPECT_FALSE([native.delegate control:native
                               textView:editor
                    doCommandBySelector:@selector(insertNewline:)]);
  EXPECT_EQ(commands, (std::vector<std::string>{"moveDown:", "insertNewline:"}));
}

TEST_F(MacSearchFieldTest, GoesOutOfTheViewWithItsOwner) {
  NSView* around = native.superview;
  field.reset();
  EXPECT_EQ(around.subviews.count, 0U);
  EXPECT_TRUE(native.delegate == nil);
}

}  // namespace pellar::contract
