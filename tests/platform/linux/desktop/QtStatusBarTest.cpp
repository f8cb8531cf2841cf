#include <gtest/gtest.h>

#include <QApplication>
#include <chrono>
#include <functional>

#include "platform/linux/desktop/QtStatusBar.h"
#include "platform/linux/system/QtMainLoop.h"
#include "tests/platform/linux/SharedDesktop.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar {
namespace {

// Nobody presses the mouse.
class NoPresses final : public EventMonitors {
 public:
  Subscription onGlobalMouseDown(std::function<void()> /*callback*/) override { return {}; }
  Subscription onLocalMouseDown(std::function<void(const ObservedClick&)> /*callback*/) override {
    return {};
  }
  Subscription onceButtonsAreUp(std::function<void()> /*callback*/) override { return {}; }
};

// What a second copy does that is started right after the first.
TEST(StatusBar, AMenuThatIsAskedForBeforeTheIconIsInTheTrayStaysOpen) {
  auto& observer = contract::SharedDesktop::get().observer();
  QtMainLoop loop;
  NoPresses monitors;
  QtStatusBar statusBar(loop, monitors);
  const auto item = statusBar.addItem({"", 0, "Pellar"}, [] {
    return Menu{ClosureItem{"Quit Pellar", [] {}}};
  });
  statusBar.openMenu();
  const auto isOpen = [] { return QApplication::activePopupWidget() != nullptr; };
  ASSERT_TRUE(isOpen());
  EXPECT_TRUE(test::runToolkitUntil(
      [&] { return observer.keyboardIsGrabbed() && observer.pointerIsGrabbed(); }, e2e::patience));
  // The toolkit closes a menu that lost the keyboard only after a tenth of a second.
  EXPECT_FALSE(test::runToolkitUntil([&] { return !isOpen(); }, std::chrono::milliseconds(300)));
  EXPECT_TRUE(observer.keyboardIsGrabbed());
}

}  // namespace
}  // namespace pellar
