// The strip on an office suite, whose menus are another kind of tree than an editor's.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>

#include "tests/e2e/DesktopTest.h"

namespace pellar::e2e {

namespace {

using namespace std::chrono_literals;

// Its first start with a fresh profile reads some hundred megabytes.
constexpr auto firstStart = 90s;

class Writer : public EveryWindowManager {
 protected:
  Writer() { desktop.openSessionBus(); }
  // What was run is a starter, which does not take along what it started.
  ~Writer() override {
    if (suite && !suite->waitForEnd(0ms)) kill(-suite->pid(), SIGKILL);
  }

  [[nodiscard]] std::filesystem::path document(const std::string& name) const {
    return desktop.folders().home() / "Documents" / (name + ".fodt");
  }
  [[nodiscard]] std::string contents(const std::string& name) const { return Folders::read(document(name)); }
  // Each document in a window of its own with room for all tools, the last in front.
  std::vector<Window> openInWriter(const std::vector<std::string>& names) {
    std::vector<std::string> command{
        "soffice", "-env:UserInstallation=file://" + (desktop.folders().root() / "suite").string(),
        "--norestore", "--nologo", "--nofirststartwizard"};
    for (const auto& name : names) {
      desktop.folders().write(document(name), flatDocument);
      command.push_back(document(name).string());
    }
    suite = desktop.start(command, "suite");
    std::vector<Window> all;
    int offset = 0;
    for (const auto& name : names) {
      all.push_back(desktop.waitForWindow(name + ".fodt", firstStart));
      place(all.back(), {60 + offset, 160 + offset, 1000, 500});
      offset += 50;
    }
    return all;
  }
  // By its frame's corner and its own size. A window of it may make itself large more than once while it
  // opens, and what was asked for before that is lost.
  void place(Window window, const Box& wanted) {
    auto& observer = desktop.observer();
    observer.waitUntil("the window is placed", [&] {
      const auto frame = desktop.frame(window);
      const auto own = observer.box(window.id);
      if (frame.x == wanted.x && frame.y == wanted.y && own && own->width == wanted.width &&
          own->height == wanted.height)
        return true;
      askFor(window, wanted);
      return false;
    });
  }
  void askFor(Window window, const Box& wanted) {
    auto& observer = desktop.observer();
    const std::string vertically = "_NET_WM_STATE_MAXIMIZED_VERT";
    const std::string horizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
    if (observer.hasState(window.id, vertically) || observer.hasState(window.id, horizontally))
      return observer.sendToRoot(window.id, "_NET_WM_STATE",
                                 {0, observer.atom(vertically), observer.atom(horizontally), 2});
    // A plain request means another corner for such a window.
    constexpr std::uint32_t cornerOfFrame = 1;
    constexpr std::uint32_t placeAndSize = 15U << 8U;
    constexpr std::uint32_t fromPager = 2U << 12U;
    observer.sendToRoot(window.id, "_NET_MOVERESIZE_WINDOW",
                        {cornerOfFrame | placeAndSize | fromPager, static_cast<std::uint32_t>(wanted.x),
                         static_cast<std::uint32_t>(wanted.y), static_cast<std::uint32_t>(wanted.width),
                         static_cast<std::uint32_t>(wanted.height)});
  }
  void showStripOverDocuments(const std::vector<std::string>& names, Window front) {
    startPellar();
    strip.waitUntilOver(front);
    strip.waitUntilTabs(names.size());
    for (const auto& name : names)
      waitUntilStateHas("\"" + document(name).string() + "\": \"libreoffice-writer\"");
    // A window that came up at the top of the screen makes room.
    waitUntilIdle();
  }

  std::unique_ptr<Process> suite;

 private:
  static constexpr const char* flatDocument =
      R"(<?xml version="1.0" encoding="UTF-8"?>)"
      R"(<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" )"
      R"(xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" office:version="1.2" )"
      R"(office:mimetype="application/vnd.oasis.opendocument.text"><office:body><office:text>)"
      R"(<text:p>Some text.</text:p></office:text></office:body></office:document>)";
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(Writer);

TEST_P(Writer, SaveAllWritesAChangedDocumentAndPlusMakesANewOne) {
  const auto all = openInWriter({"report", "plan"});
  desktop.activate(all[0]);
  desktop.observer().type("hello");
  desktop.activate(all[1]);
  showStripOverDocuments({"report", "plan"}, all[1]);
  const auto behind = strip.windowsBehindTabs(all);
  EXPECT_TRUE(std::is_permutation(behind.begin(), behind.end(), all.begin(), all.end()));
  desktop.activate(all[1]);
  strip.waitUntilOver(all[1]);

  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("the changed document is written",
                               [&] { return contents("report").find("hello") != std::string::npos; });
  EXPECT_EQ(contents("plan").find("hello"), std::string::npos);
  desktop.observer().waitUntil("the log says how many",
                               [this] { return logLines("save all: 2 of 2 windows") == 1; });

  // Mouse and keyboard are the user's afterwards.
  desktop.observer().type("again");
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("what was typed then is written, too",
                               [&] { return contents("plan").find("again") != std::string::npos; });
  EXPECT_EQ(contents("report").find("again"), std::string::npos);
  desktop.observer().waitUntil("the log says how many",
                               [this] { return logLines("save all: 2 of 2 windows") == 2; });
  strip.clickTool(StripTool::newDocument);
  const auto untitled = desktop.waitForWindow("Untitled");
  strip.waitUntilTabs(3);
  EXPECT_TRUE(desktop.isActive(untitled));
}

TEST_P(Writer, CloseAllBehindSaveAllClosesEveryDocumentAndLosesNothing) {
  const auto all = openInWriter({"report", "plan"});
  desktop.activate(all[0]);
  desktop.observer().type("hello");
  desktop.activate(all[1]);
  showStripOverDocuments({"report", "plan"}, all[1]);
  strip.clickTool(StripTool::saveAll);
  desktop.observer().waitUntil("the log says how many",
                               [this] { return logLines("save all: 2 of 2 windows") == 1; });
  desktop.observer().waitUntil("the changed document is written",
                               [&] { return contents("report").find("hello") != std::string::npos; });
  strip.clickTool(StripTool::closeAll);
  desktop.observer().waitUntil("no document is open", [&] {
    const auto clients = desktop.observer().clients();
    return std::ranges::none_of(
        all, [&](Window each) { return std::ranges::find(clients, each.id) != clients.end(); });
  });
}

}  // namespace

}  // namespace pellar::e2e
