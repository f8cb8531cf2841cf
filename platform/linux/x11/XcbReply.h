#pragma once

#include <cstdlib>
#include <memory>

namespace pellar {

struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};

// Owns a reply or an event of xcb; null stands for a request that failed, most often on a window that is
// gone.
template <class Reply>
using XcbReply = std::unique_ptr<Reply, XcbFree>;

template <class Reply>
[[nodiscard]] XcbReply<Reply> owned(Reply* reply) {
  return XcbReply<Reply>(reply);
}

}  // namespace pellar
