#pragma once

#include <memory>

#include "platform/HttpClient.h"

class QNetworkAccessManager;

namespace pellar {

// HTTP by the toolkit's network library, which is there only while a request is under way: it brings threads
// and memory along.
class QtHttpClient final : public HttpClient {
 public:
  QtHttpClient();
  ~QtHttpClient() override;

  [[nodiscard]] Subscription get(const HttpRequest& request, Reply reply) override;

 private:
  class Exchange;

  std::shared_ptr<QNetworkAccessManager> network();

  std::weak_ptr<QNetworkAccessManager> network_;  // owned by the exchanges under way
};

}  // namespace pellar
