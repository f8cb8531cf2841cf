#include "platform/linux/x11/X11WindowManagerTurn.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>

#include "platform/MainLoop.h"
#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Property.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 2s;

}  // namespace

X11WindowManagerTurn::X11WindowManagerTurn(X11Connection& connection, MainLoop& loop)
    : connection_(connection),
      loop_(loop),
      events_(connection.onEvent([this](const xcb_generic_event_t& event) { handle(event); })) {}

X11WindowManagerTurn::~X11WindowManagerTurn() {
  for (const auto& [window, question] : questions_) xcb_destroy_window(connection_.xcb(), window);
}

void X11WindowManagerTurn::afterwards(std::function<void()> callback) {
  if (!wouldBeAnswered()) {
    callback();
    return;
  }
  auto* const xcb = connection_.xcb();
  const xcb_window_t asked = xcb_generate_id(xcb);
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(xcb, XCB_COPY_FROM_PARENT, asked, connection_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
  connection_.sendToWindowManager(asked, connection_.atoms().netRequestFrameExtents, {});
  connection_.flush();
  questions_.emplace(asked,
                     Question{std::move(callback), loop_.after(patience, [this, asked] { end(asked); })});
}

bool X11WindowManagerTurn::wouldBeAnswered() const {
  constexpr std::uint32_t mostAtoms = 4096;
  const auto& atoms = connection_.atoms();
  const XcbReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_.xcb(),
                             xcb_get_property(connection_.xcb(), 0, connection_.root(), atoms.netSupported,
                                              XCB_ATOM_ATOM, 0, mostAtoms),
                             nullptr));
  const auto supported = numbers(reply.get());
  return std::ranges::find(supported, atoms.netRequestFrameExtents) != supported.end();
}

void X11WindowManagerTurn::handle(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_PROPERTY_NOTIFY) return;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  const auto found = questions_.find(change.window);
  if (found == questions_.end() || change.atom != connection_.atoms().netFrameExtents) return;
  loop_.post([this, alive = alive_.watch(), asked = change.window] {
    if (alive) end(asked);
  });
}

void X11WindowManagerTurn::end(xcb_window_t asked) {
  auto question = questions_.extract(asked);
  if (!question) return;
  xcb_destroy_window(connection_.xcb(), asked);
  question.mapped().callback();
}

}  // namespace pellar
