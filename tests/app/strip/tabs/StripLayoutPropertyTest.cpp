#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "app/strip/tabs/StripLayout.h"
#include "tests/app/strip/tabs/DrawnItems.h"
#include "tests/app/strip/tabs/FakeViewHost.h"

namespace pellar {
namespace {

const FixedPitchMeasure fixedPitch;

double tenths(int low, int high) {
  return *rc::gen::inRange(low * 10, high * 10 + 1) / 10.0;
}

StripContent anyContent() {
  StripContent content;
  content.tabCount =
      *rc::gen::oneOf(rc::gen::inRange<std::size_t>(0, 12), rc::gen::inRange<std::size_t>(0, 601));
  content.searchExpanded = *rc::gen::arbitrary<bool>();
  content.officeTools = *rc::gen::arbitrary<bool>();
  content.renameTool = *rc::gen::arbitrary<bool>();
  content.autoSaveOn = *rc::gen::arbitrary<bool>();
  return content;
}

ViewRect anyBounds() {
  return {0, 0, tenths(0, 4000), tenths(0, 80)};
}

RC_GTEST_PROP(StripLayoutProperties, TabsStandInOrderFourApartAndKeepTheirLimits, ()) {
  const StripContent content = anyContent();
  const StripLayout layout(anyBounds(), content, fixedPitch);
  const auto rects = layout.tabRects();
  RC_ASSERT(rects.size() == content.tabCount);
  for (std::size_t i = 0; i < rects.size(); ++i) {
    RC_ASSERT(rects[i].width >= 26 && rects[i].width <= 180);
    RC_ASSERT(rects[i].width == rects[0].width);
    RC_ASSERT(rects[i] == layout.tabRect(i));
    const double expectedX = i == 0 ? 6 : rects[i - 1].maxX() + 4;
    RC_ASSERT(std::abs(rects[i].x - expectedX) < 1e-6);
  }
}

RC_GTEST_PROP(StripLayoutProperties, TabsNotAtTheirLimitFillTheirRoomExactly, ()) {
  const StripContent content = anyContent();
  const StripLayout layout(anyBounds(), content, fixedPitch);
  const double width = layout.tabWidth();
  if (content.tabCount == 0 || width <= 26) return;
  const double end =
      layout.searchHidden() ? layout.tools().front().rect.minX() : layout.searchFrame().minX() - 2;
  const double last = layout.tabRect(content.tabCount - 1).maxX();
  if (width < 180) {
    RC_ASSERT(std::abs(last - (end - (layout.searchHidden() ? 14 : 12))) < 1e-6);
  } else {
    RC_ASSERT(last <= end);
  }
}

RC_GTEST_PROP(StripLayoutProperties, ToolsEndSixFromTheRightAndNeverOverlap, ()) {
  const ViewRect bounds = anyBounds();
  const StripLayout layout(bounds, anyContent(), fixedPitch);
  const auto tools = layout.tools();
  RC_ASSERT(!tools.empty());
  RC_ASSERT(tools.back().tool.action == StripAction::closeWindow);
  RC_ASSERT(std::abs(tools.back().rect.maxX() - (bounds.width - 6)) < 1e-9);
  for (std::size_t i = 0; i < tools.size(); ++i) {
    RC_ASSERT(std::abs(tools[i].rect.width - tools[i].tool.width) < 1e-9);
    RC_ASSERT(tools[i].rect.y == 4 && tools[i].rect.height == bounds.height - 8);
    if (i == 0) continue;
    const double gap = tools[i].rect.minX() - tools[i - 1].rect.maxX();
    const double expected = tools[i].tool.action == StripAction::minimize ? 10 : 2;
    RC_ASSERT(std::abs(gap - expected) < 1e-6);
  }
}

RC_GTEST_PROP(StripLayoutProperties, AHitIsTheFirstRectangleThatHoldsThePoint, ()) {
  const ViewRect bounds = anyBounds();
  const StripLayout layout(bounds, anyContent(), fixedPitch);
  const ViewPoint point{tenths(-10, 4010), tenths(-5, 85)};
  const StripHit hit = layout.hit(point);

  StripHit expected;
  const auto tabs = layout.tabRects();
  for (std::size_t i = tabs.size(); i-- > 0;) {
    if (!tabs[i].contains(point)) continue;
    expected.tab = i;
    const ViewRect mark{tabs[i].maxX() - 23, tabs[i].midY() - 10, 20, 20};
    expected.close = tabs[i].width >= 52 && mark.contains(point);
  }
  if (!expected.tab) {
    for (const PlacedTool& placed : layout.tools()) {
      if (placed.rect.contains(point)) expected.action = placed.tool.action;
    }
  }
  RC_ASSERT(hit == expected);
}

RC_GTEST_PROP(StripLayoutProperties, LessRoomNeverUnfoldsTheToolsOrTheSearch, ()) {
  const ViewRect bounds = anyBounds();
  const StripContent content = anyContent();
  const StripLayout wide(bounds, content, fixedPitch);

  ViewRect narrower = bounds;
  narrower.width -= tenths(0, 500);
  StripContent fuller = content;
  if (content.tabCount > 0) fuller.tabCount += *rc::gen::inRange<std::size_t>(0, 50);
  for (const StripLayout& tighter :
       {StripLayout(narrower, content, fixedPitch), StripLayout(bounds, fuller, fixedPitch)}) {
    RC_ASSERT(!wide.crowded() || tighter.crowded());
    RC_ASSERT(!wide.searchCompact() || tighter.searchCompact());
  }
}

RC_GTEST_PROP(StripLayoutProperties, SearchButtonAndFieldAreNeverShownTogether, ()) {
  const StripContent content = anyContent();
  const StripLayout layout(anyBounds(), content, fixedPitch);
  const bool button = layout.toolRect(StripAction::search).has_value();
  RC_ASSERT(button == (content.officeTools && layout.searchHidden()));
  RC_ASSERT(layout.toolRect(StripAction::more).has_value() == layout.crowded());
  RC_ASSERT(std::abs(layout.searchFrame().maxX() + 8 - layout.tools().front().rect.minX()) < 1e-9);
}

RC_GTEST_PROP(StripLayoutProperties, ADropStaysAmongTheOtherTabsAndItsMarkerBetweenThem, ()) {
  StripContent content = anyContent();
  content.tabCount += 2;
  const StripLayout layout(anyBounds(), content, fixedPitch);
  const auto dragged = *rc::gen::inRange<std::size_t>(0, content.tabCount);
  const double x = tenths(-100, 4100);
  const std::size_t drop = layout.dropIndex(dragged, x);
  RC_ASSERT(drop < content.tabCount);
  RC_ASSERT(layout.dropIndex(dragged, x + tenths(0, 300)) >= drop);

  const ViewRect marker = layout.dropMarker(dragged, drop);
  std::size_t othersBefore = 0;
  for (std::size_t i = 0; i < content.tabCount; ++i) {
    if (i == dragged) continue;
    const ViewRect rect = layout.tabRect(i);
    const bool before = rect.maxX() <= marker.minX() + 1e-6;
    RC_ASSERT(before || rect.minX() + 1e-6 >= marker.maxX());
    if (before) ++othersBefore;
  }
  RC_ASSERT(othersBefore == drop);
}

}  // namespace
}  // namespace pellar
