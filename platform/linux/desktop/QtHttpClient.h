#pragma once

#include <QElapsedTimer>
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

  // Whether a name may still be being looked up, which goes on after a request has ended. The library would
  // wait for that at the end of the program.
  [[nodiscard]] bool mayBeLookingUpNames() const;

 private:
  class Exchange;

  std::shared_ptr<QNetworkAccessManager> network();

  QElapsedTimer sinceRequest_;                    // invalid before the first one
  std::weak_ptr<QNetworkAccessManager> network_;  // owned by the exchanges under way
};

}  // namespace pellar
