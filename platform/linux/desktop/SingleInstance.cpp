#include "platform/linux/desktop/SingleInstance.h"

#include <poll.h>

#include <QSocketNotifier>
#include <chrono>
#include <utility>
#include <vector>

#include "platform/linux/x11/EventType.h"
#include "platform/linux/x11/InternAtom.h"
#include "platform/linux/x11/X11Selection.h"
#include "platform/linux/x11/XcbReply.h"

namespace pellar {
namespace {

// A program that works is much faster, and a user does not wait longer for one that does not.
constexpr std::chrono::seconds answerTime{5};

}  // namespace

SingleInstance::Claim SingleInstance::claim() {
  std::unique_ptr<SingleInstance> instance(new SingleInstance(xcb_connect(nullptr, nullptr)));
  if (!instance->own()) return {nullptr, instance->otherAnswered_};
  return {std::move(instance)};
}

SingleInstance::SingleInstance(xcb_connection_t* connection) : connection_(connection) {}

SingleInstance::~SingleInstance() {
  notifier_.reset();
  xcb_disconnect(connection_);
}

bool SingleInstance::own() {
  if (xcb_connection_has_error(connection_) != 0) return true;
  selection_ = internAtom(connection_, "_PELLAR_INSTANCE");
  request_ = internAtom(connection_, "_PELLAR_OPEN_MENU");
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  window_ = xcb_generate_id(connection_);
  const std::uint32_t overrideRedirect = 1;
  xcb_create_window(connection_, 0, window_, screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
  while (const xcb_window_t owner = takeUnlessOwned()) {
    const Answer answer = ask(owner);
    otherAnswered_ = answer == Answer::given;
    if (answer != Answer::ended) return false;
  }
  // A round trip: everything has been carried out.
  if (X11Selection::owner(connection_, selection_) != window_)
    return xcb_connection_has_error(connection_) != 0;
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { take(); });
  return true;
}

// The window of the copy that owns the display already, else none.
xcb_window_t SingleInstance::takeUnlessOwned() const {
  // Two copies started at the same moment must not both find the display free.
  xcb_grab_server(connection_);
  const xcb_window_t owner = X11Selection::owner(connection_, selection_);
  if (owner == XCB_WINDOW_NONE) xcb_set_selection_owner(connection_, window_, selection_, XCB_CURRENT_TIME);
  xcb_ungrab_server(connection_);
  return owner;
}

SingleInstance::Answer SingleInstance::ask(xcb_window_t owner) {
  using Clock = std::chrono::steady_clock;
  const std::uint32_t itsEnd = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, owner, XCB_CW_EVENT_MASK, &itsEnd);
  send(owner);
  const auto end = Clock::now() + answerTime;
  for (;;) {
    if (const auto answer = nextAnswer()) return *answer;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd entry{xcb_get_file_descriptor(connection_), POLLIN, 0};
    if (left <= 0 || xcb_connection_has_error(connection_) != 0) return Answer::none;
    poll(&entry, 1, static_cast<int>(left));
  }
}

std::optional<SingleInstance::Answer> SingleInstance::nextAnswer() {
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    const int type = eventType(*event);
    // An error: the window was gone before it could be asked.
    if (type == 0 || type == XCB_DESTROY_NOTIFY) return Answer::ended;
    if (type == XCB_CLIENT_MESSAGE &&
        reinterpret_cast<const xcb_client_message_event_t*>(event.get())->type == request_)
      return Answer::given;
  }
  return std::nullopt;
}

// The question and its answer are one message, with the window of who sends it.
void SingleInstance::send(xcb_window_t to) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = to;
  message.type = request_;
  message.data.data32[0] = window_;
  // With no mask of events it goes to the client that made the window, whatever that has asked for.
  xcb_send_event(connection_, 0, to, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
}

void SingleInstance::take() {
  std::vector<xcb_window_t> asking;
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    if (eventType(*event) != XCB_CLIENT_MESSAGE) continue;
    const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
    if (message->type == request_) asking.push_back(message->data.data32[0]);
  }
  // The connection is the display's: LostServer says what happened.
  if (xcb_connection_has_error(connection_) != 0) notifier_->setEnabled(false);
  if (asking.empty()) return;
  if (onAsked) onAsked();
  for (const xcb_window_t window : asking) send(window);
}

}  // namespace pellar
