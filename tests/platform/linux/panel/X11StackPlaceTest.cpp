#include <xcb/xcb.h>

#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "platform/linux/panel/X11StackPlace.h"
#include "tests/platform/linux/X11WorldTest.h"

namespace pellar::contract {
namespace {

class X11StackPlaceTest : public X11WorldTest {
 protected:
  X11StackPlaceTest()
      : pid(world().launch("Editor")),
        report(world().open(pid, "Report", {200, 150, 500, 300})),
        plan(world().open(pid, "Plan", {300, 250, 500, 300})) {
    elementOf(pid, "Plan");
    auto opened = X11Connection::open();
    connection = std::move(std::get<std::unique_ptr<X11Connection>>(opened));
    mirror.emplace(*connection);
    xcb_connection_t* const xcb = connection->xcb();
    panel = xcb_generate_id(xcb);
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, panel, connection->root(), 0, 0, 10, 10, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &overrideRedirect);
    place.emplace(*connection, *mirror, panel);
  }

  xcb_window_t frameOf(WorldWindow window) { return mirror->find(x11().window(window).id)->links.back().id; }
  std::size_t height(xcb_window_t window) {
    connection->serverTime();
    return desktop().observer().heightInStack(window).value();
  }
  void standOver(WorldWindow window) {
    place->standOver(x11().window(window).id);
    ASSERT_TRUE(place->keep());
  }

  ProcessId pid;
  WorldWindow report;
  WorldWindow plan;
  std::unique_ptr<X11Connection> connection;
  std::optional<X11Mirror> mirror;
  xcb_window_t panel = XCB_WINDOW_NONE;
  std::optional<X11StackPlace> place;
};

TEST_F(X11StackPlaceTest, ThePanelStandsDirectlyAboveItsWindow) {
  standOver(report);
  EXPECT_EQ(height(panel), height(frameOf(report)) + 1);
  EXPECT_FALSE(place->keep()) << "it has its place";
  standOver(plan);
  EXPECT_EQ(height(panel), height(frameOf(plan)) + 1);
  place->standOnTop();
  place->take();
  EXPECT_EQ(height(panel), desktop().observer().topLevels().size() - 1);
}

TEST_F(X11StackPlaceTest, APanelThatWasRaisedWithOthersGoesBackToItsPlace) {
  standOver(report);
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(connection->xcb(), panel, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  EXPECT_GT(height(panel), height(frameOf(plan)));
  EXPECT_EQ(place->coveredWindows(), std::vector{x11().window(plan).id});
  place->takeAgain();
  EXPECT_TRUE(place->coveredWindows().empty());
  EXPECT_EQ(height(panel), height(frameOf(report)) + 1);
}

TEST_F(X11StackPlaceTest, APanelOfNoWindowIsNotMovedWhenTheStackChanges) {
  const auto before = height(panel);
  place->takeAgain();
  EXPECT_EQ(height(panel), before);
}

TEST_F(X11StackPlaceTest, AWindowThatIsMerelyMovedSaysNothingOfTheStack) {
  standOver(report);
  xcb_configure_notify_event_t event{};
  event.response_type = XCB_CONFIGURE_NOTIFY;
  event.event = event.window = frameOf(report);
  event.above_sibling = 1;
  EXPECT_TRUE(place->note(event)) << "where it stood is not known";
  for (int step = 0; step < 10; ++step) EXPECT_FALSE(place->note(event));
  event.above_sibling = 2;
  EXPECT_TRUE(place->note(event));
  event.above_sibling = panel;
  EXPECT_TRUE(place->note(event));
  EXPECT_TRUE(place->note(event)) << "once more above the panel";
  // Another one, elsewhere and right above the window.
  event.event = event.window = frameOf(plan);
  EXPECT_FALSE(place->note(event));
  event.above_sibling = frameOf(report);
  EXPECT_TRUE(place->note(event));
}

TEST_F(X11StackPlaceTest, AWindowThatIsGoneLeavesThePanelWhereItIs) {
  standOver(report);
  const auto before = height(panel);
  place->standOver(x11().window(report).id + 1000);
  EXPECT_FALSE(place->keep());
  place->takeAgain();
  EXPECT_EQ(height(panel), before);
}

}  // namespace
}  // namespace pellar::contract
