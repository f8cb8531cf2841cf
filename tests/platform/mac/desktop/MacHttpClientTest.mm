#include <vector>

#include "platform/HttpClient.h"
#include "tests/contract/ContractTest.h"
#include "tests/platform/mac/OneAnswerServer.h"

namespace pellar::contract {

using std::chrono::milliseconds;

// Addresses of this machine in numbers, which transport security lets be asked without encryption.
class MacHttpClientTest : public ContractTest {
 protected:
  using Afterwards = OneAnswerServer::Afterwards;

  void get(const std::string& url, milliseconds timeout = std::chrono::seconds(10),
           std::size_t largestBody = 1000) {
    request = world().platform().httpClient.get(
        {url, timeout, largestBody},
        [this](std::optional<std::string> body) { answers.push_back(std::move(body)); });
    EXPECT_TRUE(answers.empty()) << "not inside the call";
  }
  void expectAnswer(const std::optional<std::string>& body) {
    ASSERT_TRUE(wait([this] { return !answers.empty(); }));
    EXPECT_EQ(answers, std::vector{body});
  }

  std::vector<std::optional<std::string>> answers;
  Subscription request;
};

TEST_F(MacHttpClientTest, GivesTheBodyWhateverTheStatus) {
  for (const char* status : {"200 OK", "404 Not Found", "500 Oops"}) {
    answers.clear();
    const OneAnswerServer server(OneAnswerServer::with(status, "{\"latest\": \"2.0\"}"));
    get(server.url());
    expectAnswer("{\"latest\": \"2.0\"}");
  }
}

TEST_F(MacHttpClientTest, ABodyThatIsTooLongCountsAsNone) {
  const OneAnswerServer longest(OneAnswerServer::with("200 OK", std::string(1000, 'x')));
  get(longest.url());
  expectAnswer(std::string(1000, 'x'));
  answers.clear();
  const OneAnswerServer longer(OneAnswerServer::with("200 OK", std::string(1001, 'x')));
  get(longer.url());
  expectAnswer(std::nullopt);
}

TEST_F(MacHttpClientTest, AnEndlessAnswerIsCutOff) {
  const OneAnswerServer server("HTTP/1.1 200 OK\r\n\r\n" + std::string(5000, 'x'), Afterwards::waits);
  get(server.url());
  expectAnswer(std::nullopt);
}

TEST_F(MacHttpClientTest, AnAnswerBrokenOffIsNone) {
  const OneAnswerServer server("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{\"latest\"");
  get(server.url());
  expectAnswer(std::nullopt);
}

TEST_F(MacHttpClientTest, ASilentServerIsGivenUpInTime) {
  const OneAnswerServer server("", Afterwards::waits);
  const auto start = mainLoop().uptime();
  get(server.url(), milliseconds(500));
  expectAnswer(std::nullopt);
  EXPECT_LT(mainLoop().uptime() - start, std::chrono::seconds(5));
}

TEST_F(MacHttpClientTest, WhereNobodyListensThereIsNoAnswer) {
  std::string url;
  {
    const OneAnswerServer gone("");
    url = gone.url();
  }
  get(url);
  expectAnswer(std::nullopt);
}

TEST_F(MacHttpClientTest, AsksOnlyTheWeb) {
  for (const char* url : {"file:///etc/hosts", "data:,text", "", "no address at all", "ftp://127.0.0.1/"}) {
    answers.clear();
    get(url);
    expectAnswer(std::nullopt);
  }
}

TEST_F(MacHttpClientTest, FollowsToWhereTheServerSendsIt) {
  const OneAnswerServer there(OneAnswerServer::with("200 OK", "{\"latest\": \"2.0\"}"));
  const OneAnswerServer here(OneAnswerServer::sendingTo(there.url()));
  get(here.url());
  expectAnswer("{\"latest\": \"2.0\"}");
}

TEST_F(MacHttpClientTest, IsNotSentRoundInCirclesOrOutOfTheWeb) {
  for (const char* place : {"/v1/update", "file:///etc/hosts", "ftp://127.0.0.1/update"}) {
    answers.clear();
    const OneAnswerServer server(OneAnswerServer::sendingTo(place));
    get(server.url());
    expectAnswer(std::nullopt);
  }
}

TEST_F(MacHttpClientTest, ADroppedRequestIsNotAnswered) {
  const OneAnswerServer server(OneAnswerServer::with("200 OK", "{}"));
  get(server.url());
  ASSERT_TRUE(wait([&server] { return server.requests() == 1; }));
  request.cancel();
  letPass(milliseconds(200));
  EXPECT_TRUE(answers.empty());
}

}  // namespace pellar::contract
