#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/HttpClient.h"
#include "platform/sim/system/SimMainLoop.h"

namespace pellar {

// The network and the one server on it. Requests are answered in the way set when they are sent.
class SimHttpServer final : public HttpClient {
 public:
  explicit SimHttpServer(SimMainLoop& loop) : loop_(loop) {}

  [[nodiscard]] Subscription get(const HttpRequest& request, Reply reply) override;

  // What happens to requests from now on. At first there is no network.
  void unplug();
  void answer(const std::string& body, std::chrono::milliseconds delay = std::chrono::milliseconds(40));
  void staySilent();
  // Closes the connection when only a part of the body is sent.
  void breakOff();

  [[nodiscard]] const std::vector<HttpRequest>& requests() const { return requests_; }
  // Requests without a reply so far.
  [[nodiscard]] int open() const { return static_cast<int>(open_.use_count() - 1); }

 private:
  // When the reply comes, and what it is; no time for never.
  struct Plan {
    std::optional<std::chrono::milliseconds> delay;
    std::optional<std::string> body;
  };

  SimMainLoop& loop_;
  Plan plan_{std::chrono::milliseconds(0), std::nullopt};
  std::vector<HttpRequest> requests_;
  std::shared_ptr<int> open_ = std::make_shared<int>(0);
};

}  // namespace pellar
