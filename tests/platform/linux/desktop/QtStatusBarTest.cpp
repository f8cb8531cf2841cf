#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <functional>

#include "platform/linux/desktop/QtStatusBar.h"
#include "platform/linux/system/QtMainLoop.h"
#include "tests/platform/linux/SharedDesktop.h"

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

bool waitUntil(const std::function<bool()>& condition, QDeadlineTimer deadline) {
  while (!condition()) {
    if (deadline.hasExpired()) return false;
    QApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

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
  const QDeadlineTimer patience(15000);
  EXPECT_TRUE(
      waitUntil([&] { return observer.keyboardIsGrabbed() && observer.pointerIsGrabbed(); }, patience));
  // The toolkit closes a menu that lost the keyboard only after a tenth of a second.
  EXPECT_FALSE(waitUntil([&] { return !isOpen(); }, QDeadlineTimer(300)));
  EXPECT_TRUE(observer.keyboardIsGrabbed());
}

}  // namespace
}  // namespace pellar
