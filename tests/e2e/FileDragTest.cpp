// A file dragged out of another program, over the strip.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/e2e/DesktopTest.h"
#include "tests/e2e/XReply.h"

namespace pellar::e2e {

namespace {

// A program that the user drags a file out of, as it speaks to what is under the pointer (XDND, version 5).
class DragSource {
 public:
  struct Answer {
    std::string type;
    std::uint32_t flags = 0;
  };

  explicit DragSource(Desktop& desktop)
      : desktop_(desktop),
        connection_(xcb_connect(desktop.display().c_str(), nullptr)),
        window_(xcb_generate_id(connection_)) {
    xcb_create_window(connection_, 0, window_, desktop.observer().root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    flush();
  }
  ~DragSource() { xcb_disconnect(connection_); }
  DragSource(const DragSource&) = delete;
  DragSource& operator=(const DragSource&) = delete;

  // The file is over a place of a window that understands; gives what that window says.
  Answer moveTo(xcb_window_t target, int x, int y) {
    desktop_.observer().movePointer(x, y);
    if (target != over_) {
      leave();
      if (desktop_.observer().numbers(target, "XdndAware") != std::vector<std::uint32_t>{5})
        throw std::runtime_error("the window takes no part in a drag");
      over_ = target;
      send("XdndEnter", {window_, 5U << 24, desktop_.observer().atom("text/uri-list"), 0, 0});
    }
    send("XdndPosition", {window_, 0, static_cast<std::uint32_t>(x << 16 | y), XCB_CURRENT_TIME,
                          desktop_.observer().atom("XdndActionCopy")});
    return waitForAnswer();
  }
  void leave() {
    if (over_ != XCB_NONE) send("XdndLeave", {window_, 0, 0, 0, 0});
    over_ = XCB_NONE;
  }
  Answer drop() {
    send("XdndDrop", {window_, 0, XCB_CURRENT_TIME, 0, 0});
    over_ = XCB_NONE;
    return waitForAnswer();
  }

 private:
  void send(const std::string& type, const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = over_;
    message.type = desktop_.observer().atom(type);
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(connection_, 0, over_, 0, reinterpret_cast<const char*>(&message));
    flush();
  }
  void flush() {
    const XReply<xcb_get_input_focus_reply_t> fence(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  }
  Answer waitForAnswer() {
    Answer answer;
    desktop_.observer().waitUntil("the window answers the drag", [&] {
      flush();
      while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
        if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        answer.flags = message.data.data32[1];
        for (const char* type : {"XdndStatus", "XdndFinished"})
          if (message.type == desktop_.observer().atom(type)) answer.type = type;
      }
      return !answer.type.empty();
    });
    return answer;
  }

  Desktop& desktop_;
  xcb_connection_t* connection_;
  xcb_window_t window_;
  xcb_window_t over_ = XCB_NONE;
};

class FileDrag : public EveryWindowManager {
 protected:
  void openThree() {
    for (const char* title : {"Report", "Plan", "Budget"})
      all.push_back(editor().open(title, {100, 150, 900, 400}));
    startPellar();
    strip.waitUntilOver(all.back());
    strip.waitUntilTabs(all.size());
  }
  DragSource::Answer dragOver(DragSource& source, std::size_t tab) {
    const auto box = strip.box();
    return source.moveTo(strip.window().value(), box->x + strip.tabs().at(tab).marker, box->y + 16);
  }

  std::vector<Window> all;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(FileDrag);

TEST_P(FileDrag, HeldOverATabBringsItsWindowToTheFrontAndIsNotTaken) {
  openThree();
  DragSource source(desktop);
  for (const std::size_t tab : {0U, 1U}) {
    const auto answer = dragOver(source, tab);
    EXPECT_EQ(answer.type, "XdndStatus");
    EXPECT_EQ(answer.flags & 1, 0U) << "a drop is not accepted";
    strip.waitUntilOver(all[tab]);
  }
  const auto end = source.drop();
  EXPECT_EQ(end.type, "XdndFinished");
  EXPECT_EQ(end.flags & 1, 0U);
  EXPECT_TRUE(desktop.isActive(all[1]));
  EXPECT_EQ(strip.tabs().size(), 3U);
}

}  // namespace

}  // namespace pellar::e2e
