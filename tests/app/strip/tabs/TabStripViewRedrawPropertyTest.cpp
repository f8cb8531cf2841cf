#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "app/strip/tabs/TabStripView.h"
#include "core/Log.h"
#include "tests/app/strip/tabs/DrawnItems.h"
#include "tests/app/strip/tabs/FakeViewHost.h"

namespace pellar {
namespace {

// A rectangle that every thing of this kind stays in; a close mark's text is inside its 14-point square.
ViewRect extent(const DrawnItem& thing) {
  if (thing.kind != DrawnItem::Kind::text) return thing.rect;
  return {thing.rect.x - 3, thing.rect.y + 2, 14, 14};
}

std::vector<DrawnItem> without(std::vector<DrawnItem> things, const std::vector<DrawnItem>& taken) {
  for (const DrawnItem& thing : taken) {
    const auto found = std::find(things.begin(), things.end(), thing);
    if (found != things.end()) things.erase(found);
  }
  return things;
}

std::vector<TabItem> anyTabs() {
  const auto ids = *rc::gen::unique<std::vector<WindowId>>(rc::gen::inRange<WindowId>(1, 30));
  std::vector<TabItem> tabs;
  for (const WindowId id : ids) {
    TabItem tab{id, std::to_string(*rc::gen::inRange(0, 3)), std::nullopt, *rc::gen::inRange(0, 4) == 0};
    if (*rc::gen::inRange(0, 4) == 0) tab.tag = Color::of(SystemColor::orange);
    tabs.push_back(tab);
  }
  return tabs;
}

// The same number of tabs, each perhaps another, renamed or moved.
std::vector<TabItem> changedTabs(std::vector<TabItem> tabs) {
  if (tabs.empty()) return tabs;
  const auto one = *rc::gen::inRange<std::size_t>(0, tabs.size());
  const auto other = *rc::gen::inRange<std::size_t>(0, tabs.size());
  switch (*rc::gen::inRange(0, 4)) {
    case 0:
      tabs[one].label += "!";
      break;
    case 1:
      tabs[one].active = !tabs[one].active;
      break;
    case 2:
      std::swap(tabs[one], tabs[other]);
      break;
    default:
      tabs[one].id += 100;
      break;
  }
  return tabs;
}

void anyStep(TabStripView& view, const FakeViewHost& host) {
  const ViewPoint point{*rc::gen::inRange(-20, static_cast<int>(host.size.width) + 20) * 1.0,
                        *rc::gen::inRange(0, 32) * 1.0};
  const MouseEvent event{point, host.onScreen(point), false, 1};
  switch (*rc::gen::inRange(0, 12)) {
    case 0:
      return view.mouseDown(event);
    case 1:
    case 2:
      return view.mouseDragged(event);
    case 3:
      return view.mouseUp(event);
    case 4:
    case 5:
      return view.mouseMoved(event);
    case 6:
      return view.mouseExited();
    case 7:
      return view.setTabs(anyTabs());
    case 8:
    case 9:
      return view.setTabs(changedTabs(view.tabs()));
    case 10:
      return view.setAccent(*rc::gen::element(Color::of(SystemColor::blue), Color::of(SystemColor::red)));
    default:
      switch (*rc::gen::inRange(0, 4)) {
        case 0:
          return view.setAutoSaveOn(*rc::gen::arbitrary<bool>());
        case 1:
          return view.setOfficeTools(*rc::gen::arbitrary<bool>());
        case 2:
          return view.setRenameTool(*rc::gen::arbitrary<bool>());
        default:
          return view.setSearchExpanded(*rc::gen::arbitrary<bool>());
      }
  }
}

RC_GTEST_PROP(StripRedraw, WhateverChangesIsAskedToBeRedrawn, ()) {
  Log::setUrl("/nonexistent/strip.log");
  FakeViewHost host({*rc::gen::inRange(0, 1600) * 1.0, 32});
  TabStripView view(host);
  view.setTabs(anyTabs());
  const int steps = *rc::gen::inRange(1, 30);
  for (int step = 0; step < steps; ++step) {
    host.forgetRequests();
    const auto before = painted(view, host.bounds());
    anyStep(view, host);
    const auto after = painted(view, host.bounds());
    if (host.fullRedraws > 0) continue;

    auto changed = without(before, after);
    const auto appeared = without(after, before);
    changed.insert(changed.end(), appeared.begin(), appeared.end());
    for (const DrawnItem& thing : changed) {
      const auto visible = extent(thing).intersection(host.bounds());
      if (!visible) continue;
      const bool asked = std::ranges::any_of(host.redrawn, [&](const ViewRect& dirty) {
        return dirty.grown(1e-6).intersection(*visible) == visible;
      });
      if (!asked) RC_FAIL("not redrawn: " + (std::ostringstream() << thing).str());
    }
  }
}

RC_GTEST_PROP(StripRedraw, APartPaintedAloneHasEverythingThatLiesInIt, ()) {
  Log::setUrl("/nonexistent/strip.log");
  FakeViewHost host({*rc::gen::inRange(0, 1600) * 1.0, 32});
  TabStripView view(host);
  view.setTabs(anyTabs());
  for (int step = 0; step < 10; ++step) anyStep(view, host);

  const ViewRect dirty{*rc::gen::inRange(0, 1600) * 1.0, *rc::gen::inRange(0, 32) * 1.0,
                       *rc::gen::inRange(1, 300) * 1.0, *rc::gen::inRange(1, 32) * 1.0};
  std::vector<DrawnItem> expected;
  const auto all = painted(view, host.bounds().grown(5000));
  const auto part = painted(view, dirty);
  for (const DrawnItem& thing : all) {
    if (extent(thing).intersects(dirty)) expected.push_back(thing);
  }
  // In order, nothing that shows is left out; what is painted besides belongs to a tab that is touched.
  auto rest = part.begin();
  for (const DrawnItem& thing : expected) {
    rest = std::find(rest, part.end(), thing);
    RC_ASSERT(rest != part.end());
    ++rest;
  }
}

}  // namespace
}  // namespace pellar
