#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/desktop/QtHttpClient.h"
#include "tests/platform/linux/ToolkitLoop.h"
#include "tests/support/LoopbackServer.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class WebRequest : public testing::Test {
 protected:
  static constexpr std::size_t largest = 10'000;

  void get(const std::string& path, std::chrono::milliseconds timeout = 10s) {
    replies = 0;
    body.reset();
    subscription = client.get({server.address() + path, timeout, largest}, [this](auto received) {
      ++replies;
      body = std::move(received);
    });
  }
  [[nodiscard]] bool waitForReply(std::chrono::milliseconds deadline = 12s) {
    return test::runToolkitAsAProgramUntil([this] { return replies > 0; }, deadline);
  }
  std::optional<std::string> bodyOf(const std::string& path) {
    get(path);
    EXPECT_TRUE(waitForReply()) << path;
    EXPECT_EQ(replies, 1);
    return body;
  }

  LoopbackServer server;
  QtHttpClient client;
  Subscription subscription;
  int replies = 0;
  std::optional<std::string> body;
};

TEST_F(WebRequest, BringsTheBody) {
  server.answerBody("{\"latest\":\"2\"}");
  EXPECT_EQ(bodyOf("/v1/update"), "{\"latest\":\"2\"}");
  EXPECT_EQ(server.asked(), std::vector<std::string>{"/v1/update"});
}

TEST_F(WebRequest, WhateverTheStatus) {
  for (const auto* status :
       {"400 Bad Request", "403 Forbidden", "404 Not Found", "418 Odd", "500 Broken", "503 Away"}) {
    server.answer([status](const std::string&) { return LoopbackServer::whole("body", status); });
    EXPECT_EQ(bodyOf("/"), "body") << status;
  }
}

TEST_F(WebRequest, AnyBytes) {
  const std::string bytes("\xff\xfe\0\x80", 4);
  server.answerBody(bytes);
  EXPECT_EQ(bodyOf("/"), bytes);
}

TEST_F(WebRequest, AnEmptyBodyIsOne) {
  server.answerBody("");
  EXPECT_EQ(bodyOf("/"), "");
}

TEST_F(WebRequest, FollowsARedirect) {
  server.answer([](const std::string& path) {
    if (path == "/new") return LoopbackServer::whole("moved");
    return std::string(
        "HTTP/1.1 302 Found\r\nLocation: /new\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
  });
  EXPECT_EQ(bodyOf("/old"), "moved");
}

TEST_F(WebRequest, ARedirectLoopEnds) {
  server.answer([](const std::string& path) {
    return "HTTP/1.1 302 Found\r\nLocation: " + path + "x\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
  });
  EXPECT_EQ(bodyOf("/x"), std::nullopt);
  EXPECT_LE(server.asked().size(), 10U);
}

TEST_F(WebRequest, ARedirectToAFileIsNotFollowed) {
  server.answer([](const std::string&) {
    return std::string(
        "HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\nContent-Length: 0\r\nConnection: "
        "close\r\n\r\n");
  });
  EXPECT_EQ(bodyOf("/"), std::nullopt);
}

TEST_F(WebRequest, ABodyThatIsTooLongIsNone) {
  server.answerBody(std::string(largest, 'x'));
  EXPECT_EQ(bodyOf("/"), std::string(largest, 'x'));
  server.answerBody(std::string(largest + 1, 'x'));
  EXPECT_EQ(bodyOf("/"), std::nullopt);
  server.answer([](const std::string&) {
    return "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + std::string(3'000'000, 'x');
  });
  EXPECT_EQ(bodyOf("/"), std::nullopt);
}

TEST_F(WebRequest, AnAnswerBrokenOffIsNone) {
  server.answer([](const std::string&) {
    return std::string("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"latest\":\"2\"}");
  });
  EXPECT_EQ(bodyOf("/"), std::nullopt);
  server.answer([](const std::string&) { return std::string("HTTP/1.1 200 OK\r\nConte"); });
  EXPECT_EQ(bodyOf("/"), std::nullopt);
}

TEST_F(WebRequest, WhatIsNoHttpIsNoAnswer) {
  server.answer([](const std::string&) { return std::string("220 mail.example ready\r\n"); });
  EXPECT_EQ(bodyOf("/"), std::nullopt);
}

TEST_F(WebRequest, SilenceIsOutOfTime) {
  get("/", 300ms);
  ASSERT_TRUE(waitForReply());
  EXPECT_EQ(body, std::nullopt);
}

TEST_F(WebRequest, NobodyListeningIsNoAnswer) {
  subscription = client.get({"http://127.0.0.1:1/", 10s, largest}, [this](auto received) {
    ++replies;
    body = std::move(received);
  });
  EXPECT_EQ(replies, 0) << "never inside the call";
  ASSERT_TRUE(waitForReply());
  EXPECT_EQ(body, std::nullopt);
}

TEST_F(WebRequest, AnAddressThatIsNoneIsNoAnswer) {
  subscription = client.get({"nonsense", 10s, largest}, [this](auto received) {
    ++replies;
    body = std::move(received);
  });
  ASSERT_TRUE(waitForReply());
  EXPECT_EQ(body, std::nullopt);
}

TEST_F(WebRequest, DroppedItIsNeverAnswered) {
  server.answerBody("late");
  get("/");
  subscription.cancel();
  EXPECT_FALSE(waitForReply(300ms));
}

TEST_F(WebRequest, ItMayBeDroppedByItsOwnReply) {
  server.answerBody("here");
  subscription = client.get({server.address() + "/", 10s, largest}, [this](const auto&) {
    subscription.cancel();
    ++replies;
  });
  ASSERT_TRUE(waitForReply());
  EXPECT_FALSE(test::runToolkitAsAProgramUntil([this] { return replies > 1; }, 100ms));
}

TEST_F(WebRequest, ANameMayBeLookedUpOnceItWasAskedFor) {
  server.answerBody("");
  EXPECT_FALSE(client.mayBeLookingUpNames());
  get("/");
  EXPECT_TRUE(client.mayBeLookingUpNames());
  ASSERT_TRUE(waitForReply());
  EXPECT_TRUE(client.mayBeLookingUpNames()) << "for a while";
}

TEST_F(WebRequest, SeveralAtOnce) {
  server.answer([](const std::string& path) { return LoopbackServer::whole(path); });
  std::vector<std::string> bodies;
  std::vector<Subscription> all;
  for (const auto* path : {"/a", "/b", "/c"})
    all.push_back(client.get({server.address() + path, 10s, largest},
                             [&](auto received) { bodies.push_back(received.value_or("none")); }));
  ASSERT_TRUE(test::runToolkitAsAProgramUntil([&] { return bodies.size() == 3; }, 10s));
  std::ranges::sort(bodies);
  EXPECT_EQ(bodies, (std::vector<std::string>{"/a", "/b", "/c"}));
}

}  // namespace
}  // namespace pellar
