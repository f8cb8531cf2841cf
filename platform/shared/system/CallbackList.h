#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/MainLoop.h"
#include "platform/Subscription.h"

namespace pellar {

// The subscribers of one event. A callback may drop itself or any other subscription, or the list's owner,
// while it runs; one that was dropped is not called any more.
template <class... Arguments>
class CallbackList {
 public:
  using Callback = std::function<void(Arguments...)>;

  Subscription add(Callback callback) {
    auto entry = std::make_shared<Entry>(Entry{std::move(callback), true});
    entries_->push_back(entry);
    return Subscription([entry, entries = std::weak_ptr<Entries>(entries_)] {
      entry->active = false;
      if (auto list = entries.lock()) std::erase(*list, entry);
    });
  }

  [[nodiscard]] bool empty() const { return entries_->empty(); }

  void call(Arguments... arguments) const { callAll(*entries_, arguments...); }

  // Calls from the next turn of `loop`; the subscribers of that moment hear it.
  void post(MainLoop& loop, Arguments... arguments) const { loop.post(later(arguments...)); }
  // The call itself, for a queue of its own; does nothing once the list is gone.
  [[nodiscard]] std::function<void()> later(Arguments... arguments) const {
    return [entries = std::weak_ptr<Entries>(entries_), arguments...] {
      if (auto list = entries.lock()) callAll(*list, arguments...);
    };
  }

 private:
  struct Entry {
    Callback callback;
    bool active = true;
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;

  static void callAll(const Entries& entries, const Arguments&... arguments) {
    // A callback may add and drop entries, so the list itself is not walked.
    const Entries snapshot(entries.begin(), entries.end());
    for (const auto& entry : snapshot) {
      if (entry->active) entry->callback(arguments...);
    }
  }

  std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
};

}  // namespace pellar
