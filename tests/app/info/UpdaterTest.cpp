#include "app/info/Updater.h"
#include "tests/support/ShellStory.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Updates : public ShellStory {
 protected:
  static constexpr const char* newer = R"({"latest":"1.5.0"})";

  void checkNow() {
    mac.statusBar().choose({"Check for updates now"});
    mac.advance(1s);
  }
  [[nodiscard]] bool offersAnUpdate() { return menu().front().starts_with("Update to "); }
};

TEST_F(Updates, TheFirstLookIsAfterEightSecondsAndThenEverySixHours) {
  start();
  mac.advance(8s - 1ms);
  EXPECT_TRUE(mac.web().requests().empty());
  mac.advance(1ms);
  ASSERT_EQ(mac.web().requests().size(), 1U);
  EXPECT_EQ(mac.web().requests()[0].url, "https://pellar.example/v1/update");
  EXPECT_EQ(mac.web().requests()[0].timeout, 15s);
  EXPECT_EQ(mac.web().requests()[0].largestBody, std::size_t{1} << 20);
  mac.advance(6h - 8s - 1ms);
  EXPECT_EQ(mac.web().requests().size(), 1U);
  mac.advance(1ms);
  EXPECT_EQ(mac.web().requests().size(), 2U);
  mac.advance(24h);
  EXPECT_EQ(mac.web().requests().size(), 6U);
}

TEST_F(Updates, NoneByThemselvesWhileTheSettingIsOff) {
  change([](Settings& settings) { settings.autoUpdateCheck = false; });
  start();
  mac.advance(24h);
  EXPECT_TRUE(mac.web().requests().empty());
}

TEST_F(Updates, SwitchedOffWhileTheProgramRunsTheyStopAndSwitchedOnTheyGoOn) {
  start();
  mac.statusBar().choose({"Automatically check for updates"});
  mac.advance(24h);
  EXPECT_TRUE(mac.web().requests().empty());
  mac.statusBar().choose({"Automatically check for updates"});
  mac.advance(1s);
  EXPECT_EQ(mac.web().requests().size(), 1U);
  mac.web().answer(newer);
  mac.advance(6h);
  EXPECT_EQ(mac.web().requests().size(), 2U);
  EXPECT_EQ(log.count("update available: 1.5.0 (running 1.4.0), notify=true"), 1);
  EXPECT_EQ(mac.notifications().shown().size(), 1U);
}

TEST_F(Updates, ANewerVersionIsLoggedOfferedAndAnnounced) {
  start();
  mac.web().answer(newer);
  mac.advance(9s);
  EXPECT_EQ(log.messages(), (Rows{"tracking started", "update available: 1.5.0 (running 1.4.0), notify=true",
                                  "update notification auth granted=true; posting for 1.5.0"}));
  ASSERT_EQ(mac.notifications().shown().size(), 1U);
  const auto& shown = mac.notifications().shown()[0];
  EXPECT_EQ(shown.identifier, "pellar-update-1.5.0");
  EXPECT_EQ(shown.title, "Pellar 1.5.0 is available");
  EXPECT_EQ(shown.body, "You have 1.4.0. Open Pellar to download the update.");
  EXPECT_TRUE(offersAnUpdate());
}

TEST_F(Updates, ASecondAnnouncementOfTheSameVersionTakesTheFirstOnesPlace) {
  start();
  mac.web().answer(newer);
  mac.advance(12h + 1s);
  EXPECT_EQ(mac.notifications().shown().size(), 1U);
  mac.web().answer(R"({"latest":"1.6.0"})");
  mac.advance(6h);
  EXPECT_EQ(mac.notifications().shown().size(), 2U);
  EXPECT_EQ(menu().front(), "Update to 1.6.0 — Download");
}

TEST_F(Updates, ALookTheUserAskedForMeanwhileAnnouncesNothingAndSilencesNothing) {
  start();
  mac.web().answer(newer, 5s);
  mac.advance(9s);  // the first look is under way
  mac.statusBar().choose({"Check for updates now"});
  mac.advance(20s);
  EXPECT_EQ(log.count("update available: 1.5.0 (running 1.4.0), notify=true"), 1);
  EXPECT_EQ(log.count("update available: 1.5.0 (running 1.4.0), notify=false"), 1);
  EXPECT_EQ(mac.notifications().shown().size(), 1U);
}

TEST_F(Updates, WithoutThePermissionToNotifyNothingIsPosted) {
  mac.notifications().granted = false;
  start();
  mac.web().answer(newer);
  mac.advance(9s);
  EXPECT_TRUE(log.has("update notification auth granted=false; posting for 1.5.0"));
  EXPECT_TRUE(mac.notifications().shown().empty());
  EXPECT_TRUE(offersAnUpdate());
}

TEST_F(Updates, AUserWhoNeverAnswersTheQuestionHoldsNothingUp) {
  mac.notifications().granted = std::nullopt;
  start();
  mac.web().answer(newer);
  mac.advance(24h);
  EXPECT_TRUE(offersAnUpdate());
  EXPECT_TRUE(mac.notifications().shown().empty());
}

TEST_F(Updates, TheSameOrAnOlderVersionChangesNothingAndLogsNothing) {
  start();
  for (const auto* body : {R"({"latest":"1.4.0"})", R"({"latest":"1.4"})", R"({"latest":"1.3.9"})",
                           R"({"latest":"0"})", R"({"latest":""})", R"({"latest":"v9.9"})"}) {
    mac.web().answer(body);
    checkNow();
    EXPECT_FALSE(offersAnUpdate()) << body;
  }
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(Updates, AnUpdateOnceKnownStaysKnown) {
  start();
  mac.web().answer(newer);
  checkNow();
  mac.web().answer(R"({"latest":"1.4.0"})");
  checkNow();
  mac.web().unplug();
  checkNow();
  EXPECT_TRUE(offersAnUpdate());
}

TEST_F(Updates, WhatIsNoAnswerIsSilent) {
  start();
  const std::string deep = R"({"latest":"9","notes":)" + std::string(100'000, '[') + "}";
  for (const std::string& body : {std::string(),
                                  std::string("not json"),
                                  std::string("null"),
                                  std::string("[]"),
                                  std::string("{}"),
                                  std::string(R"({"latest":null})"),
                                  std::string(R"({"latest":9})"),
                                  std::string(R"({"Latest":"9"})"),
                                  std::string(R"({"latest":"9","url":7})"),
                                  std::string(R"({"latest":"9","min":[]})"),
                                  std::string(R"({"latest":"9","notes":{}})"),
                                  std::string(R"({"latest":"9","eula":"2"})"),
                                  std::string(R"({"latest":"9","eula":{}})"),
                                  std::string(R"({"latest":"9","eula":{"version":2}})"),
                                  std::string(R"({"latest":"9","eula":{"version":"2","url":false}})"),
                                  std::string(R"({"latest":"9")"),
                                  std::string(R"({"latest":"9"} trailing)"),
                                  std::string("{\"latest\":\"9\xff\"}"),
                                  std::string("{\"latest\":\"9\"}\0", 15),
                                  std::string("\xff\xfe{\0\"\0", 6),
                                  deep,
                                  R"({"latest":"9","notes":")" + std::string(2 << 20, 'x') + "\"}"}) {
    mac.web().answer(body);
    checkNow();
    EXPECT_FALSE(offersAnUpdate()) << body.substr(0, 80);
  }
  EXPECT_TRUE(mac.windows().visible().empty()) << "no terms were taken from them either";
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(Updates, NullStandsForAnAbsentValueAndOtherKeysAreIgnored) {
  start();
  mac.web().answer(
      R"({"latest":"1.5.0","min":null,"notes":null,"url":null,"eula":null,"channel":["beta"],"n":1e400})");
  checkNow();
  EXPECT_TRUE(offersAnUpdate());
}

TEST_F(Updates, NoNetworkSilenceAndABrokenAnswerAreSilent) {
  start();
  mac.web().unplug();
  checkNow();
  mac.web().breakOff();
  checkNow();
  mac.web().staySilent();
  checkNow();
  EXPECT_EQ(mac.web().open(), 1);
  // The automatic look comes meanwhile, too.
  mac.advance(30s);
  EXPECT_EQ(mac.web().open(), 0);
  EXPECT_FALSE(offersAnUpdate());
  EXPECT_EQ(log.messages(), Rows{"tracking started"});
}

TEST_F(Updates, AnAnswerJustInTimeCountsAndALaterOneDoesNot) {
  start();
  mac.web().answer(newer, 15s);
  mac.statusBar().choose({"Check for updates now"});
  mac.advance(20s);
  EXPECT_FALSE(offersAnUpdate());
  mac.web().answer(newer, 15s - 1ms);
  mac.statusBar().choose({"Check for updates now"});
  mac.advance(20s);
  EXPECT_TRUE(offersAnUpdate());
}

TEST_F(Updates, TermsAreToldBeforeTheUpdateAlsoByOlderAnswers) {
  auto updater = Updater::create(mac.platform());
  Rows told;
  updater->onUpdate = [&](const Updater::Info& info) { told.push_back("update " + info.latest); };
  updater->onEula = [&](const std::string& version, const std::optional<std::string>& url) {
    told.push_back("terms " + version + " " + url.value_or("nowhere"));
  };
  const auto answered = [&](const std::string& body) {
    told.clear();
    mac.web().answer(body);
    updater->check(false);
    mac.advance(1s);
    return told;
  };
  EXPECT_EQ(answered(R"({"latest":"2","eula":{"version":"3","url":"https://a.example"}})"),
            (Rows{"terms 3 https://a.example", "update 2"}));
  EXPECT_EQ(answered(R"({"latest":"1.0","eula":{"version":"3"}})"), Rows{"terms 3 nowhere"});
  EXPECT_EQ(answered(R"({"latest":"1.4.0","eula":{"version":"3","url":null}})"), Rows{"terms 3 nowhere"});
  EXPECT_EQ(answered(R"({"eula":{"version":"3"}})"), Rows{});
  EXPECT_EQ(updater->available()->latest, "2");
}

TEST_F(Updates, TheUpdateIsKnownByTheTimeItIsTold) {
  const auto updater = Updater::create(mac.platform());
  std::optional<Updater::Info> known;
  updater->onUpdate = [&](const Updater::Info&) { known = updater->available(); };
  mac.web().answer(newer);
  updater->check(false);
  mac.advance(1s);
  ASSERT_TRUE(known.has_value());
  EXPECT_EQ(known->latest, "1.5.0");
}

TEST_F(Updates, EndingWhileAnAnswerIsOnItsWayIsNoHarm) {
  start();
  mac.web().answer(newer);
  mac.statusBar().choose({"Check for updates now"});
  EXPECT_EQ(mac.web().open(), 1);
  pellar.reset();
  EXPECT_EQ(mac.web().open(), 0);
  mac.advance(1s);
}

TEST_F(Updates, WithoutAKnownUpdateTheSitesDownloadsOpen) {
  auto updater = Updater::create(mac.platform());
  updater->openDownload();
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"https://pellar.example/#download"});
}

TEST_F(Updates, OnlyWebAddressesOfAnAnswerAreOpened) {
  start();
  for (const auto* url : {"file:///etc/passwd", "javascript:alert(1)", "ftp://pellar.example/x", "", "//x",
                          "https://", "https:///x", "https://a b", "http://:80/", "mailto:a@b.example",
                          "https://pellar.example/\\u0000", "https://pellar.example/%zz"}) {
    mac.web().answer(std::string(R"({"latest":"1.5.0","url":")") + url + "\"}");
    checkNow();
    mac.statusBar().choose({"Update to 1.5.0 — Download"});
    EXPECT_TRUE(mac.workspace().openedUrls().empty()) << url;
  }
  mac.web().answer(R"({"latest":"1.5.0","url":"HTTP://pellar.example/azAZ09/a%20b%fF?c=d#e"})");
  checkNow();
  mac.statusBar().choose({"Update to 1.5.0 — Download"});
  EXPECT_EQ(mac.workspace().openedUrls(), Rows{"HTTP://pellar.example/azAZ09/a%20b%fF?c=d#e"});
}

TEST_F(Updates, ABundleWithoutAVersionCountsAsVersionZero) {
  mac.platform().bundle.shortVersion.reset();
  start();
  mac.web().answer(R"({"latest":"0.0.1"})");
  checkNow();
  EXPECT_TRUE(log.has("update available: 0.0.1 (running 0), notify=false"));
}

TEST_F(Updates, AWebSiteMayBeGivenWithASlashAtItsEnd) {
  mac.platform().bundle.webSite = "http://127.0.0.1:8080/";
  forgetTerms();
  start();
  checkNow();
  EXPECT_EQ(mac.web().requests().at(0).url, "http://127.0.0.1:8080/v1/update");
  mac.statusBar().choose({"About Pellar"});
  for (const char* button : {"Website", "Terms"}) window(aboutTitle).press(button);
  window(termsTitle).press("Read full terms online");
  EXPECT_EQ(mac.workspace().openedUrls(), (Rows{"http://127.0.0.1:8080", "http://127.0.0.1:8080/terms",
                                                "http://127.0.0.1:8080/terms.html"}));
}

TEST_F(Updates, WhatIsNoWebSiteIsNotAsked) {
  for (const char* site : {"", "file:///srv", "https://", "pellar.example"}) {
    pellar.reset();
    mac.platform().bundle.webSite = site;
    start();
    checkNow();
    mac.advance(24h);
    EXPECT_TRUE(mac.web().requests().empty()) << site;
  }
}

TEST(UpdateRecord, IsWrittenWithTheSameKeysAndWithoutAbsentValues) {
  EXPECT_EQ(encodeUpdateInfo({.latest = "2"}), R"({"latest":"2"})");
  const UpdateInfo whole{"2", "1", "More tabs", "https://a.example", UpdateEula{"3", "https://b.example"}};
  EXPECT_EQ(decodeUpdateInfo(encodeUpdateInfo(whole)), whole);
  const UpdateInfo part{.latest = "2", .eula = UpdateEula{"3", std::nullopt}};
  EXPECT_EQ(encodeUpdateInfo(part), R"({"eula":{"version":"3"},"latest":"2"})");
  EXPECT_EQ(decodeUpdateInfo(encodeUpdateInfo(part)), part);
}

}  // namespace
}  // namespace pellar
