// The look for updates through the real web client, at a server of this machine.

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "app/info/Updater.h"
#include "platform/linux/desktop/QtHttpClient.h"
#include "platform/sim/SimMac.h"
#include "tests/platform/linux/ToolkitLoop.h"
#include "tests/support/LogReader.h"
#include "tests/support/LoopbackServer.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

// Passes requests on and counts what comes back.
class CountingClient final : public HttpClient {
 public:
  Subscription get(const HttpRequest& request, Reply reply) override {
    return client_.get(request, [this, reply = std::move(reply)](std::optional<std::string> body) {
      ++replies;
      reply(std::move(body));
    });
  }
  int replies = 0;

 private:
  QtHttpClient client_;
};

class UpdateOverHttp : public testing::Test {
 protected:
  using Rows = std::vector<std::string>;

  UpdateOverHttp() {
    std::filesystem::create_directories(mac.platform().folders.logFile.parent_path());
    Log::setUrl(mac.platform().folders.logFile);
    updater = updaterOf(server.address());
    updater->onUpdate = [this](const Updater::Info& info) { told.push_back("update " + info.latest); };
    updater->onEula = [this](const std::string& version, const std::optional<std::string>& url) {
      told.push_back("terms " + version + " " + url.value_or("nowhere"));
    };
  }

  std::shared_ptr<Updater> updaterOf(const std::string& site) {
    auto platform = mac.platformWith(client);
    platform.bundle.webSite = site;
    return Updater::create(platform);
  }
  bool waitForReplies(int count, std::chrono::milliseconds deadline = 10s) {
    test::runToolkitAsAProgramUntil([&] { return client.replies >= count; }, deadline);
    mac.settle();
    return client.replies == count;
  }
  // What the program hears of a look that brings this.
  Rows toldBy(const std::string& bytes) {
    told.clear();
    server.answer([bytes](const std::string&) { return bytes; });
    updater->check(true);
    EXPECT_TRUE(waitForReplies(client.replies + 1));
    return told;
  }
  Rows toldByBody(const std::string& body) { return toldBy(LoopbackServer::whole(body)); }

  SimMac mac;
  LogReader log{mac.platform().folders.logFile};
  LoopbackServer server;
  CountingClient client;
  std::shared_ptr<Updater> updater;
  Rows told;
};

TEST_F(UpdateOverHttp, ANewerVersionIsToldAndAnnounced) {
  EXPECT_EQ(toldByBody(R"({"latest":"1.5.0"})"), Rows{"update 1.5.0"});
  EXPECT_EQ(server.asked(), Rows{"/v1/update"});
  ASSERT_EQ(mac.notifications().shown().size(), 1U);
  EXPECT_EQ(mac.notifications().shown()[0].title, "Pellar 1.5.0 is available");
  EXPECT_EQ(log.messages(), (Rows{"update available: 1.5.0 (running 1.4.0), notify=true",
                                  "update notification auth granted=true; posting for 1.5.0"}));
}

TEST_F(UpdateOverHttp, TheSameAndOlderOnesOnlyBringTheirTerms) {
  EXPECT_EQ(toldByBody(R"({"latest":"1.4.0"})"), Rows{});
  EXPECT_EQ(toldByBody(R"({"latest":"1.3.9"})"), Rows{});
  EXPECT_EQ(toldByBody(R"({"latest":"1.4.0","eula":{"version":"2"}})"), Rows{"terms 2 nowhere"});
  EXPECT_EQ(toldByBody(R"({"latest":"1.0","eula":{"version":"3","url":"https://a.example/t"}})"),
            Rows{"terms 3 https://a.example/t"});
  EXPECT_TRUE(mac.notifications().shown().empty());
  EXPECT_TRUE(log.messages().empty());
}

TEST_F(UpdateOverHttp, NewerTermsComeBeforeTheNewerVersion) {
  EXPECT_EQ(toldByBody(R"({"latest":"2","eula":{"version":"2"}})"), (Rows{"terms 2 nowhere", "update 2"}));
}

TEST_F(UpdateOverHttp, AnyStatusWithAGoodBodyCounts) {
  for (const auto* status : {"203 Other", "404 Not Found", "500 Broken"})
    EXPECT_EQ(toldBy(LoopbackServer::whole(R"({"latest":"1.5.0"})", status)), Rows{"update 1.5.0"}) << status;
}

TEST_F(UpdateOverHttp, WhatIsNoRecordIsSilent) {
  const std::string good = R"({"latest":"9","eula":{"version":"9"}})";
  const std::string half = good.substr(0, good.size() / 2);
  const auto redirect = [](const std::string& to) {
    return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
  };
  const std::vector<std::pair<const char*, std::string>> answers{
      {"nothing at all", "\r\n"},
      {"an empty body", LoopbackServer::whole("")},
      {"a page", LoopbackServer::whole("<!doctype html><title>Away</title>")},
      {"half a record", LoopbackServer::whole(half)},
      {"broken off", "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(good.size()) + "\r\n\r\n" + half},
      {"broken off behind a record", "HTTP/1.1 200 OK\r\nContent-Length: 4000\r\n\r\n" + good},
      {"broken off in chunks", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n26\r\n" + half},
      {"not Unicode", LoopbackServer::whole("{\"latest\":\"9\xff\",\"eula\":{\"version\":\"9\"}}")},
      {"UTF-16", LoopbackServer::whole(std::string("\xff\xfe{\0\"\0", 6))},
      {"huge", LoopbackServer::whole(good.substr(0, good.size() - 1) + R"(,"notes":")" +
                                     std::string(2 << 20, 'x') + "\"}")},
      {"huge without a length",
       "HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + good + std::string(5 << 20, ' ')},
      {"wrong types", LoopbackServer::whole(R"({"latest":9})")},
      {"a loop", redirect("/v1/update")},
      {"a way out of the web", redirect("file:///etc/hostname")},
      {"another protocol", "SSH-2.0-OpenSSH\r\n"},
  };
  for (const auto& [name, bytes] : answers) EXPECT_EQ(toldBy(bytes), Rows{}) << name;
  EXPECT_FALSE(updater->available().has_value());
  EXPECT_TRUE(log.messages().empty());
  EXPECT_EQ(toldByBody(good), (Rows{"terms 9 nowhere", "update 9"})) << "the next look is as good as ever";
}

TEST_F(UpdateOverHttp, ASiteWithoutTheTrustOfACertificateIsNotHeard) {
  std::string address = server.address();
  updater = updaterOf(address.replace(0, 4, "https"));
  updater->onUpdate = [this](const Updater::Info& info) { told.push_back("update " + info.latest); };
  EXPECT_EQ(toldByBody(R"({"latest":"9"})"), Rows{});
}

TEST_F(UpdateOverHttp, SilenceAndDribbleEndAfterFifteenSeconds) {
  const auto other = updaterOf(server.address());
  server.answer([](const std::string&) { return std::string(); });
  QElapsedTimer clock;
  clock.start();
  updater->check(false);
  EXPECT_FALSE(waitForReplies(1, 500ms));
  // Byte after byte of an answer that never ends.
  server.dribble("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n{\"latest\":\"9\"");
  other->check(false);
  EXPECT_TRUE(waitForReplies(1, 20s));
  EXPECT_GE(clock.elapsed(), 14'900);
  EXPECT_LT(clock.elapsed(), 19'000);
  EXPECT_TRUE(waitForReplies(2, 5s));
  EXPECT_GE(clock.elapsed(), 15'400);
  EXPECT_TRUE(told.empty());
  EXPECT_FALSE(other->available().has_value());
}

}  // namespace
}  // namespace pellar
