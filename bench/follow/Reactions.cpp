#include "bench/follow/Reactions.h"

#include <xcb/damage.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/e2e/XReply.h"

namespace pellar::bench {
namespace {

constexpr std::chrono::milliseconds longestUnrest{1000};

}  // namespace

Reactions::Reactions(const std::string& display) : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_) != 0) throw std::runtime_error("cannot watch display " + display);
  const auto* damage = xcb_get_extension_data(connection_, &xcb_damage_id);
  if (damage == nullptr || damage->present == 0) throw std::runtime_error("the X server reports no damage");
  damageEvent_ = static_cast<std::uint8_t>(damage->first_event + XCB_DAMAGE_NOTIFY);
  std::free(
      xcb_damage_query_version_reply(connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));

  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  own_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, 0, own_, root_, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
  xcb_flush(connection_);
  thread_ = std::thread([this] { run(); });
}

Reactions::~Reactions() {
  xcb_client_message_event_t end{};
  end.response_type = XCB_CLIENT_MESSAGE;
  end.format = 32;
  end.window = own_;
  // An empty mask sends it to the window's creator.
  xcb_send_event(connection_, 0, own_, 0, reinterpret_cast<const char*>(&end));
  xcb_flush(connection_);
  thread_.join();
  xcb_disconnect(connection_);
}

void Reactions::watch(xcb_window_t window) {
  const std::uint32_t damage = xcb_generate_id(connection_);
  xcb_damage_create(connection_, damage, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
  damages_.push_back(damage);
  std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

void Reactions::forget() {
  // The server itself drops the damage of a window that is gone.
  for (const auto damage : damages_) {
    std::free(xcb_request_check(connection_, xcb_damage_destroy_checked(connection_, damage)));
  }
  damages_.clear();
}

void Reactions::clear() {
  const std::lock_guard lock(mutex_);
  seen_.clear();
}

std::optional<Reaction> Reactions::first(const std::function<bool(const Reaction&)>& matches,
                                         std::chrono::milliseconds deadline) {
  std::unique_lock lock(mutex_);
  std::optional<Reaction> found;
  std::size_t looked = 0;
  changed_.wait_for(lock, deadline, [&] {
    for (; looked < seen_.size(); ++looked) {
      if (matches(seen_[looked])) {
        found = seen_[looked];
        return true;
      }
    }
    return false;
  });
  return found;
}

void Reactions::waitForQuiet(std::chrono::milliseconds rest) {
  const auto end = Clock::now() + longestUnrest;
  std::unique_lock lock(mutex_);
  for (auto before = count_; Clock::now() < end; before = count_) {
    if (!changed_.wait_for(lock, rest, [&] { return count_ != before; })) return;
  }
}

void Reactions::run() {
  while (const e2e::XReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
    const auto now = Clock::now();
    const auto type = event->response_type & 0x7f;
    if (type == XCB_CLIENT_MESSAGE &&
        reinterpret_cast<const xcb_client_message_event_t*>(event.get())->window == own_) {
      return;
    }
    take(*event, now);
  }
}

void Reactions::take(const xcb_generic_event_t& event, Clock::time_point now) {
  Reaction reaction;
  reaction.at = now;
  const auto type = event.response_type & 0x7f;
  if (type == XCB_CONFIGURE_NOTIFY) {
    const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    reaction.kind = Reaction::Kind::moved;
    reaction.window = configure.window;
    reaction.x = configure.x;
    reaction.y = configure.y;
    reaction.width = configure.width;
    reaction.height = configure.height;
  } else if (type == XCB_MAP_NOTIFY) {
    reaction.kind = Reaction::Kind::mapped;
    reaction.window = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
  } else if (type == damageEvent_) {
    const auto& damage = reinterpret_cast<const xcb_damage_notify_event_t&>(event);
    reaction.kind = Reaction::Kind::drawn;
    reaction.window = damage.drawable;
    reaction.x = damage.area.x;
    reaction.y = damage.area.y;
    reaction.width = damage.area.width;
    reaction.height = damage.area.height;
  } else {
    return;
  }
  {
    const std::lock_guard lock(mutex_);
    seen_.push_back(reaction);
    ++count_;
  }
  changed_.notify_all();
}

}  // namespace pellar::bench
