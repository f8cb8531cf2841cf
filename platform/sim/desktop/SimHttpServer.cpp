#include "platform/sim/desktop/SimHttpServer.h"

#include <utility>

namespace pellar {

Subscription SimHttpServer::get(const HttpRequest& request, Reply reply) {
  requests_.push_back(request);
  Plan plan = plan_;
  if (!plan.delay || *plan.delay >= request.timeout) plan = {request.timeout, std::nullopt};
  if (plan.body && plan.body->size() > request.largestBody) plan.body.reset();
  return loop_.after(*plan.delay,
                     [reply = std::move(reply), body = std::move(plan.body), token = open_]() mutable {
                       token.reset();
                       reply(std::move(body));
                     });
}

void SimHttpServer::unplug() {
  plan_ = {std::chrono::milliseconds(0), std::nullopt};
}

void SimHttpServer::answer(const std::string& body, std::chrono::milliseconds delay) {
  plan_ = {delay, body};
}

void SimHttpServer::staySilent() {
  plan_ = {std::nullopt, std::nullopt};
}

// However much arrived, an answer that is not whole is none.
void SimHttpServer::breakOff() {
  plan_ = {std::chrono::milliseconds(40), std::nullopt};
}

}  // namespace pellar
