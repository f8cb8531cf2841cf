#pragma once

#include "platform/HttpClient.h"
#include "platform/mac/system/MainLoopDoor.h"

namespace pellar {

// Each request a session of its own, which takes the answer in as it comes so that it can be cut off.
class MacHttpClient final : public HttpClient {
 public:
  explicit MacHttpClient(MainLoop& loop) : door_(loop) {}

  [[nodiscard]] Subscription get(const HttpRequest& request, Reply reply) override;

 private:
  MainLoopDoor door_;
};

}  // namespace pellar
