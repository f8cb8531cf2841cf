#include "platform/mac/panel/MacPanel.h"

#import <QuartzCore/QuartzCore.h>

#include <cmath>

#import "platform/mac/panel/GlassView.h"
#import "platform/mac/panel/HostedView.h"
#include "platform/mac/panel/MacPanelFactory.h"
#import "platform/mac/panel/StripPanel.h"
#include "tests/contract/ContractTest.h"
#include "tests/contract/RecordingView.h"

namespace pellar::contract {

// Panels that are made and not shown: nobody is there to look.
class MacPanelTest : public ContractTest {
 protected:
  void make(const PanelStyle& style) { panel = world().platform().panels.makePanel(style); }
  [[nodiscard]] NSPanel* native() const { return static_cast<const MacPanel&>(*panel).native(); }

  static constexpr PanelStyle strip{
      .contentSize = {400, 32}, .canBecomeKey = true, .stationary = true, .ignoresCycle = true};
  static constexpr PanelStyle popUp{.contentSize = {480, 300}, .level = PanelLevel::popUpMenu};

  RecordingView view;  // depends-on: nothing; the panel goes first
  std::unique_ptr<Panel> panel;
};

TEST_F(MacPanelTest, EveryPanelIsBorderlessTranslucentAndNeverActivates) {
  for (const PanelStyle& style : {strip, popUp}) {
    make(style);
    EXPECT_EQ(native().styleMask, NSWindowStyleMaskNonactivatingPanel);
    EXPECT_EQ(native().backingType, NSBackingStoreBuffered);
    EXPECT_FALSE(native().opaque);
    EXPECT_TRUE([native().backgroundColor isEqual:NSColor.clearColor]);
    EXPECT_TRUE(native().hasShadow);
    EXPECT_FALSE(native().hidesOnDeactivate) << "this program is never active";
    EXPECT_FALSE(native().releasedWhenClosed);
    EXPECT_FALSE(native().canBecomeMainWindow);
    EXPECT_FALSE(native().canHide) << "another program's Hide Others takes away what may hide";
    EXPECT_FALSE(native().movable) << "the system moves what may be moved when displays change";
    EXPECT_FALSE(native().visible);
    EXPECT_EQ(native().frame.size.width, style.contentSize.width);
    EXPECT_EQ(native().frame.size.height, style.contentSize.height);
  }
}

TEST_F(MacPanelTest, SurvivesAFrameThatNoWindowCanHave) {
  make(strip);
  for (const double strange : {1e10, -1e10, 1e300, -1e300}) {
    panel->setFrame({strange, strange, std::abs(strange), 32}, true);
    EXPECT_LE(std::abs(panel->frame().x), 1e6);
  }
  panel->setFrame({100, 200, 640, 32}, true);
  EXPECT_EQ(panel->frame(), (ScreenRect{100, 200, 640, 32}));
}

TEST_F(MacPanelTest, TheStripFloatsStaysWithItsSpaceAndCanHaveTheKeyboard) {
  make(strip);
  EXPECT_TRUE([native() isKindOfClass:StripPanel.class]);
  EXPECT_EQ(native().level, 3);
  EXPECT_EQ(native().collectionBehavior,
            NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
                NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary);
  EXPECT_TRUE(native().canBecomeKeyWindow);
  EXPECT_TRUE(native().becomesKeyOnlyIfNeeded) << "a click on a tab leaves the keyboard where it is";
}

TEST_F(MacPanelTest, APopUpStandsOverMenusAndCannotHaveTheKeyboard) {
  make(popUp);
  EXPECT_EQ(native().level, 101);
  EXPECT_EQ(native().collectionBehavior,
            NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary);
  EXPECT_FALSE(native().canBecomeKeyWindow);
}

TEST_F(MacPanelTest, ItsGroundIsDarkGlassWithRoundCornersAndAThinBorder) {
  make(strip);
  ASSERT_TRUE([native().contentView isKindOfClass:GlassView.class]);
  GlassView* glass = static_cast<GlassView*>(native().contentView);
  EXPECT_TRUE(glass.flipped);
  EXPECT_EQ(glass.material, NSVisualEffectMaterialHUDWindow);
  EXPECT_EQ(glass.blendingMode, NSVisualEffectBlendingModeBehindWindow);
  EXPECT_EQ(glass.state, NSVisualEffectStateActive);
  EXPECT_TRUE([glass.appearance.name isEqualToString:NSAppearanceNameDarkAqua]);
  EXPECT_EQ(glass.layer.cornerRadius, 12);
  EXPECT_TRUE(glass.layer.masksToBounds);
  EXPECT_EQ(glass.layer.borderWidth, 1);
  const CGColorRef border = glass.layer.borderColor;
  ASSERT_TRUE(border != nullptr);
  EXPECT_NEAR(CGColorGetAlpha(border), 0.14, 0.001);
  EXPECT_EQ(glass.maskImage.capInsets.top, 12);
}

TEST_F(MacPanelTest, AnArchivedGlassIsRefused) {
  bool raised = false;
  @try {
    NSKeyedArchiver* archiver = [[NSKeyedArchiver alloc] initRequiringSecureCoding:NO];
    (void)[[GlassView alloc] initWithCoder:archiver];
  } @catch (NSException* exception) {
    raised = [exception.reason isEqualToString:@"Fatal error"];
  }
  EXPECT_TRUE(raised);
}

TEST_F(MacPanelTest, WithoutGlassTheViewFillsIt) {
  PanelStyle clear = popUp;
  clear.glass = false;
  make(clear);
  EXPECT_TRUE([native().contentView isKindOfClass:HostedView.class]);
}

TEST_F(MacPanelTest, ItsViewGrowsWithItAndIsAsHighAsItLooks) {
  make(strip);
  panel->setView(&view);
  panel->setFrame({200, 300, 500, 40}, false);
  EXPECT_EQ(panel->frame(), (ScreenRect{200, 300, 500, 40}));
  EXPECT_EQ(panel->host().bounds(), (ViewRect{0, 0, 500, 40}));
  EXPECT_EQ(panel->host().toScreen({10, 4, 50, 20}), (ScreenRect{210, 316, 50, 20}));
  EXPECT_EQ(panel->host().fromScreen({210, 336}), (ViewPoint{10, 4}));
  panel->setView(nullptr);
  EXPECT_FALSE(panel->host().toScreen({10, 4, 50, 20}).has_value()) << "no view, no place on the screen";
}

TEST_F(MacPanelTest, LaysItsViewOutBeforeDrawingIt) {
  make(strip);
  panel->setView(&view);
  panel->setFrame({200, 300, 500, 32}, true);
  NSView* content = native().contentView;
  NSBitmapImageRep* picture = [content bitmapImageRepForCachingDisplayInRect:content.bounds];
  ASSERT_TRUE(picture != nil);
  [content cacheDisplayInRect:content.bounds toBitmapImageRep:picture];
  EXPECT_GT(view.draws, 0);
  EXPECT_TRUE(view.laidOutBeforeDrawing);
  panel->setView(nullptr);
}

TEST_F(MacPanelTest, TheFactoryKnowsThePanelsThatExist) {
  const MacPanelFactory& factory = static_cast<MacPanelFactory&>(world().platform().panels);
  make(strip);
  NSWindow* window = native();
  EXPECT_EQ(factory.panelOf(window), panel.get());
  EXPECT_EQ(factory.panelAt({10, 10}), nullptr) << "it is not shown";
  panel.reset();
  EXPECT_EQ(factory.panelOf(window), nullptr);
  EXPECT_EQ(factory.panelOf(nil), nullptr);
}

}  // namespace pellar::contract
