#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace pellar::e2e {

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};

// A reply or an event of the X server; null when the request failed.
template <class Reply>
using XReply = std::unique_ptr<Reply, FreeReply>;

}  // namespace pellar::e2e
