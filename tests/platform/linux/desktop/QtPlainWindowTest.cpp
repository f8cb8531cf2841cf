#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/desktop/QtPlainWindow.h"
#include "tests/e2e/Keys.h"
#include "tests/platform/linux/SharedDesktop.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class PlainWindows : public testing::Test {
 protected:
  PlainWindows() : desktop(contract::SharedDesktop::get()) {}

  // What is destroyed goes by the loop.
  void TearDown() override {
    window.reset();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  void make(const WindowDescription& description) {
    window = std::make_unique<QtPlainWindow>(description);
    native = nullptr;
    for (auto* const each : QApplication::topLevelWidgets())
      if (each->windowTitle().toStdString() == description.title) native = each;
    ASSERT_NE(native, nullptr);
  }
  // The same on the screen, with the keyboard.
  void show(const WindowDescription& description) {
    make(description);
    window->makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  }
  static bool waitUntil(const std::function<bool()>& condition) {
    return test::runToolkitAsAProgramUntil(condition, 15s);
  }
  [[nodiscard]] bool isActive() {
    return native->isVisible() &&
           desktop.observer().activeWindow() == static_cast<xcb_window_t>(native->winId());
  }
  void strike(std::uint32_t key) { desktop.observer().strike(key); }
  // The button in a window's title bar.
  void clickClose() {
    desktop.observer().sendToRoot(static_cast<xcb_window_t>(native->winId()), "_NET_CLOSE_WINDOW",
                                  {desktop.observer().serverTime(), 2});
  }
  template <class T>
  std::vector<T*> parts() {
    const auto found = native->findChildren<T*>(QString(), Qt::FindDirectChildrenOnly);
    return {found.begin(), found.end()};
  }
  // The column takes its places when it is shown.
  QRect placeOf(QWidget* part) {
    native->ensurePolished();
    native->layout()->activate();
    return part->geometry();
  }

  e2e::Desktop& desktop;
  std::unique_ptr<QtPlainWindow> window;
  QWidget* native = nullptr;
};

TEST_F(PlainWindows, HaveTheSizeAndTitleOfTheirDescriptionAndStandInTheMiddle) {
  make({.title = "About", .contentSize = {360, 260}, .elements = {}});
  EXPECT_FALSE(window->isVisible());
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  EXPECT_TRUE(window->isVisible());
  const auto box = desktop.observer().box(static_cast<xcb_window_t>(native->winId()));
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->width, 360);
  EXPECT_EQ(box->height, 260);
  EXPECT_NEAR(box->x + box->width / 2, 720, 50);
  EXPECT_NEAR(box->y + box->height / 2, 450, 50) << "but for its title bar";
}

TEST_F(PlainWindows, ComeAndGoAsOftenAsOneLikes) {
  show({.title = "About", .contentSize = {360, 260}, .elements = {}});
  for (int round = 0; round < 2; ++round) {
    window->close();
    EXPECT_FALSE(window->isVisible());
    ASSERT_TRUE(waitUntil(
        [this] { return !desktop.observer().isViewable(static_cast<xcb_window_t>(native->winId())); }));
    window->makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  }
}

TEST_F(PlainWindows, HoldTheirColumnFromTopToBottomInsideTheInsets) {
  make({.title = "About",
        .contentSize = {360, 260},
        .spacing = 8,
        .insets = {26, 24, 24, 24},
        .elements = {WindowLabel{.text = "Pellar", .fontSize = 26, .weight = LabelWeight::semibold},
                     WindowSpacer{10}, WindowLabel{.text = "Version 1"}}});
  const auto labels = parts<QLabel>();
  ASSERT_EQ(labels.size(), 2U);
  const QRect heading = placeOf(labels[0]);
  const QRect version = placeOf(labels[1]);
  EXPECT_EQ(heading.top(), 26);
  EXPECT_NEAR(heading.center().x(), 180, 1);
  EXPECT_EQ(version.top() - (heading.bottom() + 1), 26) << "a spacer and two gaps";
}

TEST_F(PlainWindows, CutATextOffThatIsTooLongAndKeepItInOneLine) {
  show({.title = "About",
        .contentSize = {360, 260},
        .insets = {26, 24, 24, 24},
        .elements = {WindowLabel{.id = "status", .text = ""}}});
  window->setText("status", "Update to " + std::string(100'000, '9') + "\n\n is ready.");
  auto* const label = parts<QLabel>().at(0);
  EXPECT_TRUE(waitUntil([label] { return label->width() > 100; }));
  EXPECT_EQ(native->width(), 360);
  EXPECT_GE(label->x(), 24);
  EXPECT_LE(label->geometry().right(), 336);
  window->setText("status", "two\nlines");
  EXPECT_LT(label->sizeHint().height(), 30);
}

TEST_F(PlainWindows, HoldAnElementWithAFrameInIt) {
  make({.title = "Access",
        .contentSize = {420, 170},
        .elements = {
            WindowLabel{.text = "Allow it.", .frame = WindowFrame{20, 70, 380, 80}},
            WindowButton{.title = "Open settings", .handler = {}, .frame = WindowFrame{20, 20, 220, 32}}}});
  // From the bottom upward.
  EXPECT_EQ(parts<QLabel>().at(0)->geometry(), QRect(20, 20, 380, 80));
  EXPECT_EQ(parts<QPushButton>().at(0)->geometry(), QRect(20, 118, 220, 32));
}

TEST_F(PlainWindows, ChangeOnlyTheLabelThatIsNamed) {
  make({.title = "About",
        .contentSize = {360, 260},
        .elements = {WindowLabel{.text = "Version <b>1</b> & more"},
                     WindowLabel{.id = "status", .text = ""}}});
  window->setText("status", "Checking…");
  window->setText("nothing", "never seen");
  EXPECT_EQ(parts<QLabel>().at(0)->text().toStdString(), "Version <b>1</b> & more") << "no markup";
  EXPECT_EQ(parts<QLabel>().at(0)->textFormat(), Qt::PlainText);
  EXPECT_EQ(parts<QLabel>().at(1)->text().toStdString(), "Checking…");
}

TEST_F(PlainWindows, ShowATextToReadAcrossTheColumn) {
  show({.title = "Terms",
        .contentSize = {440, 360},
        .alignment = StackAlignment::trailing,
        .insets = {18, 20, 18, 20},
        .elements = {WindowLabel{.text = "Heading"},
                     WindowTextBox{.text = "1. Agreed.\n\n2. <i>All</i>", .height = 210, .inset = 6}}});
  auto* const box = parts<QPlainTextEdit>().at(0);
  EXPECT_EQ(box->toPlainText().toStdString(), "1. Agreed.\n\n2. <i>All</i>");
  EXPECT_TRUE(box->isReadOnly());
  EXPECT_EQ(box->height(), 210);
  EXPECT_EQ(box->width(), 400);
  EXPECT_EQ(parts<QLabel>().at(0)->x(), box->x()) << "the heading begins where the text does";
}

TEST_F(PlainWindows, LeaveNoRoomBelowAColumnThatReachesTheBottom) {
  show({.title = "Terms",
        .contentSize = {440, 360},
        .alignment = StackAlignment::trailing,
        .spacing = 10,
        .columnReachesBottom = true,
        .insets = {18, 20, 18, 20},
        .elements = {WindowTextBox{.text = "Read.", .height = 210},
                     WindowButtonRow{10, {WindowButton{.title = "I Agree", .handler = [] {}}}}}});
  EXPECT_EQ(native->height(), 360);
  EXPECT_EQ(parts<QPushButton>().at(0)->geometry().bottom() + 1, 360 - 18);
  EXPECT_GT(parts<QPlainTextEdit>().at(0)->height(), 210) << "the text has the room";
}

TEST_F(PlainWindows, AskForNoButtonsOnTheFrameThatDoNothing) {
  const auto hints = [this] {
    return desktop.observer().numbers(static_cast<xcb_window_t>(native->winId()), "_MOTIF_WM_HINTS");
  };
  show({.title = "Terms", .contentSize = {440, 360}, .closable = false, .elements = {}});
  EXPECT_EQ(hints(), (std::vector<std::uint32_t>{3, 4, 10, 0, 0})) << "it is moved, and that is all";
  show({.title = "About", .contentSize = {440, 360}, .elements = {}});
  EXPECT_EQ(hints(), (std::vector<std::uint32_t>{3, 36, 10, 0, 0})) << "and closed";
}

TEST_F(PlainWindows, ReturnPressesTheDefaultButtonAlsoFromTheText) {
  std::vector<std::string> pressed;
  show({.title = "Terms",
        .contentSize = {440, 360},
        .closable = false,
        .elements = {
            WindowTextBox{.text = "Read.", .height = 100},
            WindowButtonRow{10,
                            {WindowButton{.title = "Quit", .handler = [&] { pressed.emplace_back("Quit"); }},
                             WindowButton{.title = "I Agree",
                                          .handler = [&] { pressed.emplace_back("I Agree"); },
                                          .isDefault = true}}}}});
  EXPECT_LT(parts<QPushButton>().at(0)->x(), parts<QPushButton>().at(1)->x());
  strike(e2e::returnKey);
  EXPECT_TRUE(waitUntil([&] { return pressed == std::vector<std::string>{"I Agree"}; }));
  parts<QPlainTextEdit>().at(0)->setFocus();
  strike(e2e::returnKey);
  EXPECT_TRUE(waitUntil([&] { return pressed == std::vector<std::string>{"I Agree", "I Agree"}; }));
  strike(e2e::escapeKey);
  clickClose();
  parts<QPushButton>().at(0)->setFocus();
  strike(' ');
  EXPECT_TRUE(waitUntil([&] { return pressed.size() == 3; }));
  EXPECT_EQ(pressed.back(), "Quit");
  EXPECT_TRUE(window->isVisible()) << "it cannot be closed";
}

TEST_F(PlainWindows, RestKeysThatWereMeantForAnotherWindow) {
  std::vector<std::string> pressed;
  const auto button = [&pressed](const char* title, bool isDefault) {
    return WindowButton{.title = title,
                        .handler = [&pressed, title] { pressed.emplace_back(title); },
                        .isDefault = isDefault};
  };
  show({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {WindowButtonRow{10, {button("Quit", false), button("I Agree", true)}}}});
  window->restDefaultButton(1h);
  // In the order in which they are struck, the last one for this test alone.
  int heard = 0;
  QShortcut last(QKeySequence(Qt::Key_F9), native, [&heard] { ++heard; });
  strike(e2e::returnKey);
  strike(' ');
  strike(e2e::f9Key);
  ASSERT_TRUE(waitUntil([&] { return heard == 1; }));
  EXPECT_TRUE(pressed.empty());
  parts<QPushButton>().at(1)->click();
  EXPECT_EQ(pressed.size(), 1U) << "the mouse does press it";
  window->restDefaultButton(0ms);
  strike(e2e::returnKey);
  EXPECT_TRUE(waitUntil([&] { return pressed.size() == 2; }));
}

TEST_F(PlainWindows, RestFromTheMomentTheyHaveTheKeyboardAgain) {
  int pressed = 0;
  show({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {
            WindowButton{.title = "I Agree", .handler = [&pressed] { ++pressed; }, .isDefault = true}}});
  QtPlainWindow other({.title = "Other", .contentSize = {200, 100}, .elements = {}});
  other.makeKeyAndOrderFront();
  ASSERT_TRUE(waitUntil([this] { return !isActive() && !native->isActiveWindow(); }));
  // The user works elsewhere for longer than the rest lasts.
  constexpr auto rest = 3s;
  const QDeadlineTimer elsewhere(rest);
  ASSERT_TRUE(waitUntil([&elsewhere] { return elsewhere.hasExpired(); }));
  window->restDefaultButton(rest);
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitUntil([this] { return isActive() && native->isActiveWindow(); }));
  int heard = 0;
  QShortcut last(QKeySequence(Qt::Key_F9), native, [&heard] { ++heard; });
  strike(e2e::returnKey);
  strike(e2e::f9Key);
  ASSERT_TRUE(waitUntil([&heard] { return heard == 1; }));
  EXPECT_EQ(pressed, 0);
}

TEST_F(PlainWindows, ReturnPressesARoundedButtonThatHasTheKeyboard) {
  std::vector<std::string> pressed;
  const auto button = [&pressed](const char* title, bool isDefault, ButtonBezel bezel) {
    return WindowButton{.title = title,
                        .handler = [&pressed, title] { pressed.emplace_back(title); },
                        .isDefault = isDefault,
                        .bezel = bezel};
  };
  show({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {button("Read", false, ButtonBezel::inlined),
                     WindowButtonRow{10,
                                     {button("Quit", false, ButtonBezel::rounded),
                                      button("I Agree", true, ButtonBezel::rounded)}}}});
  for (const std::size_t focused : {1U, 0U, 2U}) {
    parts<QPushButton>().at(focused)->setFocus();
    const std::size_t before = pressed.size();
    strike(e2e::returnKey);
    ASSERT_TRUE(waitUntil([&] { return pressed.size() > before; }));
  }
  EXPECT_EQ(pressed, (std::vector<std::string>{"Quit", "I Agree", "I Agree"}));
}

TEST_F(PlainWindows, AButtonMayDestroyItsWindow) {
  show({.title = "Terms",
        .contentSize = {440, 360},
        .elements = {
            WindowButton{.title = "I Agree", .handler = [this] { window.reset(); }, .isDefault = true}}});
  const auto id = static_cast<xcb_window_t>(native->winId());
  strike(e2e::returnKey);
  EXPECT_TRUE(waitUntil([&] { return window == nullptr; }));
  EXPECT_TRUE(waitUntil([&] { return !desktop.observer().isViewable(id); }));
}

TEST_F(PlainWindows, TellOnlyOfTheUsersClosing) {
  show({.title = "About", .contentSize = {360, 260}, .elements = {}});
  int closed = 0;
  const auto subscription = window->onClosed([&closed] { ++closed; });
  window->close();
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  EXPECT_EQ(closed, 0);
  clickClose();
  EXPECT_TRUE(waitUntil([&closed] { return closed == 1; }));
  EXPECT_FALSE(window->isVisible());
  window->makeKeyAndOrderFront();
  ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  strike(e2e::escapeKey);
  EXPECT_TRUE(waitUntil([&closed] { return closed == 2; }));
}

TEST_F(PlainWindows, TellNobodyWhoNoLongerListens) {
  show({.title = "About", .contentSize = {360, 260}, .elements = {}});
  int closed = 0;
  int others = 0;
  auto dropped = window->onClosed([&closed] { ++closed; });
  Subscription once;
  once = window->onClosed([&] {
    ++others;
    once.cancel();
  });
  dropped.cancel();
  for (int round = 0; round < 2; ++round) {
    clickClose();
    ASSERT_TRUE(waitUntil([this] { return !window->isVisible(); }));
    window->makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([this] { return isActive(); }));
  }
  EXPECT_EQ(closed, 0);
  EXPECT_EQ(others, 1);
}

}  // namespace
}  // namespace pellar
