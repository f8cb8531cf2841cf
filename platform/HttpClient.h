#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/Subscription.h"

namespace pellar {

struct HttpRequest {
  std::string url;  // http or https
  std::chrono::milliseconds timeout{};
  std::size_t largestBody = 0;  // bytes; a longer body counts as none
};

// Asks web servers. Main thread only.
class HttpClient {
 public:
  // The body of the answer, whatever its status. Absent when there is no whole answer: no network, no name,
  // no trust in the server, too many redirects, out of time, too long, broken off.
  using Reply = std::function<void(std::optional<std::string> body)>;

  virtual ~HttpClient() = default;

  // Sends a GET and follows redirects. `reply` is called once, from the main loop, unless the subscription is
  // dropped before, which also ends the request.
  [[nodiscard]] virtual Subscription get(const HttpRequest& request, Reply reply) = 0;
};

}  // namespace pellar
