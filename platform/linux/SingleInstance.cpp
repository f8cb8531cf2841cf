#include "platform/linux/SingleInstance.h"

#include <QSocketNotifier>
#include <string_view>

#include "platform/linux/XcbReply.h"

namespace pellar {
namespace {

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
      connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t ownerOf(xcb_connection_t* connection, xcb_atom_t selection) {
  const XcbReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
  return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

}  // namespace

std::unique_ptr<SingleInstance> SingleInstance::claim() {
  std::unique_ptr<SingleInstance> instance(new SingleInstance(xcb_connect(nullptr, nullptr)));
  if (!instance->own()) return nullptr;
  return instance;
}

SingleInstance::SingleInstance(xcb_connection_t* connection) : connection_(connection) {}

SingleInstance::~SingleInstance() {
  notifier_.reset();
  xcb_disconnect(connection_);
}

bool SingleInstance::own() {
  if (xcb_connection_has_error(connection_) != 0) return true;
  selection_ = atom(connection_, "_PELLAR_INSTANCE");
  request_ = atom(connection_, "_PELLAR_OPEN_MENU");
  const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
  window_ = xcb_generate_id(connection_);
  const std::uint32_t overrideRedirect = 1;
  xcb_create_window(connection_, 0, window_, screen->root, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
  // Two copies started at the same moment must not both find nobody.
  xcb_grab_server(connection_);
  const xcb_window_t owner = ownerOf(connection_, selection_);
  if (owner == XCB_WINDOW_NONE) xcb_set_selection_owner(connection_, window_, selection_, XCB_CURRENT_TIME);
  xcb_ungrab_server(connection_);
  if (owner != XCB_WINDOW_NONE) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = owner;
    message.type = request_;
    xcb_send_event(connection_, 0, owner, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
  }
  // A round trip: everything has been carried out.
  const bool isOwner = ownerOf(connection_, selection_) == window_;
  if (owner != XCB_WINDOW_NONE) return false;
  if (!isOwner) return xcb_connection_has_error(connection_) != 0;
  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { take(); });
  return true;
}

void SingleInstance::take() {
  bool asked = false;
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
    const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
    if (message->type == request_) asked = true;
  }
  // The connection is the display's: whoever watches that says what happened.
  if (xcb_connection_has_error(connection_) != 0) notifier_->setEnabled(false);
  if (asked && onAsked) onAsked();
}

}  // namespace pellar
