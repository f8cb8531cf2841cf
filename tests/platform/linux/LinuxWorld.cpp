#include "tests/platform/linux/LinuxWorld.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <cmath>
#include <cstdlib>
#include <future>
#include <stdexcept>
#include <variant>

#include "platform/linux/x11/XcbReply.h"
#include "tests/e2e/Keys.h"
#include "tests/platform/linux/ToolkitLoop.h"

namespace pellar::contract {
namespace {

std::unique_ptr<X11Connection> connect() {
  auto opened = X11Connection::open();
  if (const auto* failure = std::get_if<X11Failure>(&opened)) throw std::runtime_error(failure->sentence);
  return std::move(std::get<std::unique_ptr<X11Connection>>(opened));
}

int pixel(double value) {
  return static_cast<int>(std::floor(value));
}

constexpr int wheelUp = 4;
constexpr int wheelDown = 5;

}  // namespace

LinuxWorld::LinuxWorld()
    : desktop_(SharedDesktop::get()),
      linux_(std::make_unique<LinuxPlatform>(connect(), [this] { lost_ = true; })),
      platform_(linux_->platform()) {}

LinuxWorld::~LinuxWorld() {
  for (auto& [pid, application] : applications_) application->quit();
  linux_.reset();
  desktop_.observer().waitUntil("the desktop is empty",
                                [this] { return desktop_.observer().clients().empty(); });
}

bool LinuxWorld::wait(const std::function<bool()>& condition, std::chrono::milliseconds deadline) {
  return test::runToolkitUntil(condition, deadline);
}

ProcessId LinuxWorld::launch(const std::string& name) {
  auto application = std::make_unique<e2e::Application>(desktop_, name);
  const ProcessId pid = application->process().pid();
  applications_.emplace(pid, std::move(application));
  return pid;
}

void LinuxWorld::terminate(ProcessId application) {
  applications_.at(application)->quit();
}

WorldWindow LinuxWorld::open(ProcessId application, const std::string& title, const AxRect& frame) {
  const e2e::Box asked{pixel(frame.x), pixel(frame.y), pixel(frame.width), pixel(frame.height)};
  const e2e::Window window = applications_.at(application)->open(title, asked);
  const e2e::Box decorated = desktop_.frame(window);
  desktop_.resize(window, 2 * asked.width - decorated.width, 2 * asked.height - decorated.height);
  desktop_.move(window, asked.x, asked.y);
  windows_.push_back({application, window});
  return static_cast<WorldWindow>(windows_.size() - 1);
}

void LinuxWorld::retitle(WorldWindow window, const std::string& title) {
  applications_.at(at(window).owner)->setTitle(at(window).window, title);
}

void LinuxWorld::moveTo(WorldWindow window, AxPoint origin) {
  desktop_.move(at(window).window, pixel(origin.x), pixel(origin.y));
}

void LinuxWorld::minimise(WorldWindow window) {
  desktop_.minimise(at(window).window);
}

void LinuxWorld::restore(WorldWindow window) {
  desktop_.restore(at(window).window);
}

void LinuxWorld::destroy(WorldWindow window) {
  applications_.at(at(window).owner)->tell(at(window).window, "destroy");
}

void LinuxWorld::focus(WorldWindow window) {
  desktop_.activate(at(window).window);
}

e2e::Box LinuxWorld::rootPoint(ScreenPoint point) const {
  const double height = platform_.screens.screens().front().frame.height;
  return {pixel(point.x), pixel(height - point.y), 0, 0};
}

void LinuxWorld::movePointer(ScreenPoint point) {
  const auto at = rootPoint(point);
  desktop_.observer().movePointer(at.x, at.y);
}

void LinuxWorld::pressLeft(ScreenPoint point) {
  movePointer(point);
  desktop_.observer().press(1);
}

void LinuxWorld::releaseLeft() {
  desktop_.observer().release(1);
}

void LinuxWorld::click(ScreenPoint point, int button) {
  const auto at = rootPoint(point);
  desktop_.observer().click(at.x, at.y, button);
}

void LinuxWorld::clickRight(ScreenPoint point) {
  click(point, 3);
}

void LinuxWorld::clickMiddle(ScreenPoint point) {
  click(point, 2);
}

void LinuxWorld::type(std::string_view text) {
  desktop_.observer().type(std::string(text));
}

void LinuxWorld::pressEscape() {
  desktop_.observer().strike(e2e::escapeKey);
}

void LinuxWorld::pressTab(const HeldKeys& held) {
  e2e::XObserver& observer = desktop_.observer();
  const std::pair<bool, std::uint32_t> modifiers[] = {
      {held.shift, e2e::shiftKey}, {held.control, e2e::controlKey}, {held.command, e2e::superKey}};
  for (const auto& [isHeld, key] : modifiers)
    if (isHeld) observer.key(key, true);
  observer.key(e2e::tabKey, true);
  // The program may be asked about the key, and does not make the desktop wait for long.
  for (int turn = 0; turn < 4; ++turn) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
  observer.key(e2e::tabKey, false);
  for (const auto& [isHeld, key] : modifiers)
    if (isHeld) observer.key(key, false);
}

int LinuxWorld::tabsReceived(WorldWindow window) {
  return desktop_.keysReceived(at(window).window, e2e::tabKey);
}

void LinuxWorld::press(Key key) {
  const std::uint32_t symbol =
      key == Key::up ? e2e::upKey : (key == Key::down ? e2e::downKey : e2e::returnKey);
  desktop_.observer().strike(symbol);
}

void LinuxWorld::turnWheel(ScreenPoint point, int notches) {
  for (int i = 0; i < std::abs(notches); ++i) click(point, notches > 0 ? wheelDown : wheelUp);
}

void LinuxWorld::whenBusy(std::function<bool()> isBusy, std::function<void()> deed) {
  auto* look = new QTimer(QCoreApplication::instance());
  QObject::connect(look, &QTimer::timeout, look, [look, isBusy = std::move(isBusy), deed = std::move(deed)] {
    if (!isBusy()) return;
    look->stop();
    look->deleteLater();
    deed();
  });
  look->start(std::chrono::milliseconds(5));
}

void LinuxWorld::workNextMenu(std::optional<int> place) {
  whenBusy([] { return QApplication::activePopupWidget() != nullptr; },
           [this, place] {
             if (!place) return pressEscape();
             for (int step = 0; step <= *place; ++step) press(Key::down);
             press(Key::enter);
           });
}

void LinuxWorld::answerNextQuestion(std::optional<std::string> text) {
  whenBusy(
      [this] {
        const QWidget* question = QApplication::activeModalWidget();
        if (question == nullptr || !question->isActiveWindow()) return false;
        // The window manager may have the focus in its own hands for a moment more.
        const auto window = static_cast<xcb_window_t>(question->effectiveWinId());
        const auto& observer = desktop_.observer();
        return observer.activeWindow() == window && observer.focus() == window;
      },
      [this, text = std::move(text)] {
        if (!text) return pressEscape();
        type(*text);
        press(Key::enter);
      });
}

std::string LinuxWorld::pasted() {
  // This process answers the one that asks, so that it must not wait for the answer.
  auto answer = std::async(std::launch::async, [this] { return desktop_.observer().clipboard(); });
  wait([&answer] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
  return answer.get();
}

Color LinuxWorld::colorAt(ScreenPoint point) {
  const auto at = rootPoint(point);
  e2e::XObserver& observer = desktop_.observer();
  const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
      observer.connection(),
      xcb_get_image(observer.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, observer.root(),
                    static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y), 1, 1, ~0U),
      nullptr));
  if (!image || xcb_get_image_data_length(image.get()) < 4) throw std::runtime_error("no pixel there");
  const std::uint8_t* bytes = xcb_get_image_data(image.get());
  return {bytes[2] / 255.0, bytes[1] / 255.0, bytes[0] / 255.0, 1, std::nullopt};
}

std::unique_ptr<World> makeWorld() {
  return std::make_unique<LinuxWorld>();
}

}  // namespace pellar::contract
