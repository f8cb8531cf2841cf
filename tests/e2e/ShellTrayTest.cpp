// The program's menu in the trays of different desktops, and what its items do there.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/e2e/ShellFixture.h"
#include "tests/e2e/Tray.h"

namespace pellar::e2e {

namespace {

using namespace std::chrono_literals;

class InATray : public Shell {
 protected:
  using Rows = Tray::Rows;

  void startWithItem() {
    startWithStrip();
    tray.waitForItem();
  }
  void waitUntilRows(const Rows& expected) {
    desktop.observer().waitUntil("the menu reads as it should", [&] { return tray.rows() == expected; });
  }
  // The menu with these rows at its top and the rest as after a fresh start without updates.
  static Rows above(Rows top) {
    const Rows rest{"---",
                    "✓ Word",
                    "✓ Excel",
                    "✓ PowerPoint",
                    "✓ Outlook",
                    "---",
                    "Auto-save changed files ▸",
                    "  ✓ Off",
                    "  Every 1 min",
                    "  Every 5 min",
                    "  Every 10 min",
                    "---",
                    "Start at login",
                    "Automatically check for updates",
                    "Check for updates now",
                    "About Pellar",
                    "---",
                    "Show log",
                    "---",
                    "Quit Pellar"};
    top.insert(top.end(), rest.begin(), rest.end());
    return top;
  }

  Tray tray{desktop};
};

TEST_F(InATray, ATrayThatCallsAsNoTrayShouldChangesNothing) {
  startWithItem();
  const auto before = tray.rows();
  ASSERT_GT(before.size(), 10U);
  tray.pester(500);
  waitUntilRows(before);
}

TEST_F(InATray, TheMenuHidesTheFrontApplicationAndShowsItAgain) {
  startWithItem();
  EXPECT_EQ(tray.item(), (Rows{"Category: ApplicationStatus", "Id: pellar", "Status: Active",
                               "Icon: 16x16 22x22 32x32 44x44 64x64"}));
  EXPECT_EQ(tray.rows(), above({"✓ All apps", "Hide for editor"}));
  tray.choose("Hide for editor");
  strip.waitUntilHidden();
  EXPECT_EQ(tray.rows(), above({"✓ All apps", "Hidden apps ▸", "  Show editor"}));
  tray.choose("Hidden apps/Show editor");
  waitUntilStripIsBack();
  EXPECT_EQ(tray.rows(), above({"✓ All apps", "Hide for editor"}));
}

TEST_F(InATray, ApplicationsAreCalledByTheirWholeNames) {
  startWithItem();
  Application own(desktop, "my_own__R&D_&_editor_");
  strip.waitUntilOver(own.open("Shell", {760, 300, 600, 400}));
  waitUntilRows(above({"✓ All apps", "Hide for my_own__R&D_&_editor_"}));
  tray.choose("Hide for my_own__R&D_&_editor_");
  strip.waitUntilHidden();
  waitUntilRows(above({"✓ All apps", "Hidden apps ▸", "  Show my_own__R&D_&_editor_"}));
}

TEST_F(InATray, OnlyOfficeApplicationsAreFollowedWithoutAllApps) {
  startWithItem();
  tray.choose("All apps");
  strip.waitUntilHidden();
  EXPECT_EQ(tray.rows(), above({"All apps"}));
  tray.choose("All apps");
  waitUntilStripIsBack();
}

TEST_F(InATray, MarksTellTheSettings) {
  startWithItem();
  for (const char* choice : {"Excel", "Auto-save changed files/Every 5 min", "Start at login"})
    tray.choose(choice);
  const Rows expected{"✓ All apps",
                      "Hide for editor",
                      "---",
                      "✓ Word",
                      "Excel",
                      "✓ PowerPoint",
                      "✓ Outlook",
                      "---",
                      "Auto-save changed files ▸",
                      "  Off",
                      "  Every 1 min",
                      "  ✓ Every 5 min",
                      "  Every 10 min",
                      "---",
                      "✓ Start at login",
                      "Automatically check for updates",
                      "Check for updates now",
                      "About Pellar",
                      "---",
                      "Show log",
                      "---",
                      "Quit Pellar"};
  waitUntilRows(expected);
  waitUntilStateHas("\"autoSaveMinutes\": 5");
  // The same after a restart.
  stopPellar();
  startPellar();
  waitUntilStripIsBack();
  desktop.observer().waitUntil("the item is there again", [&] { return tray.rows() == expected; });
}

TEST_F(InATray, TheStripsAutoSaveToolIsInStepWithTheMenu) {
  startWithItem();
  for (int round = 0; round < 2; ++round) {
    strip.clickTool(StripTool::autoSave);
    waitUntilStateHas("\"autoSaveMinutes\": 1,");
    const auto rows = tray.rows();
    EXPECT_EQ(std::ranges::count(rows, "  ✓ Every 1 min"), 1);
    EXPECT_EQ(std::ranges::count(rows, "  Off"), 1);
    tray.choose("Auto-save changed files/Off");
    waitUntilStateHas("\"autoSaveMinutes\": 0,");
    waitUntilRows(above({"✓ All apps", "Hide for editor"}));
  }
}

TEST_F(InATray, TheMenuIsReachableWhenTheSessionBusHasEnded) {
  startWithItem();
  desktop.sessionBus().end();
  chooseBySecondStart(2);
  strip.waitUntilHidden();
}

TEST_F(InATray, AClickOnTheIconOpensTheMenuAtThePointer) {
  startWithItem();
  desktop.observer().movePointer(600, 500);
  tray.activate();
  menu->waitUntilOpen();
  EXPECT_LE(std::abs(menu->box().x - 600), 2);
  strike(escapeKey);
  menu->waitUntilClosed();
}

TEST_F(InATray, ATrayThatIsStartedAnewGetsTheItemAgain) {
  startWithItem();
  tray.restart();
  tray.waitForItem();
  tray.choose("Hide for editor");
  strip.waitUntilHidden();
}

TEST_F(InATray, QuitEndsTheProgram) {
  startWithItem();
  tray.choose("Quit Pellar");
  const auto ending = pellar->waitForEnd();
  ASSERT_TRUE(ending.has_value());
  EXPECT_EQ(ending->exitCode, 0);
  EXPECT_EQ(pellar->errors(), "");
  pellar.reset();
}

TEST_F(InATray, AutoSaveSavesAChangedDocumentByItsProgramsOwnSave) {
  const auto file = desktop.folders().home() / "plan.txt";
  desktop.folders().write(file, "Some text.\n");
  const auto mousepad = desktop.start({"mousepad", "--disable-server", file.string()}, "mousepad");
  const auto plan = desktop.waitForWindow("plan.txt");
  startPellar();
  strip.waitUntilOver(plan);
  waitUntilStateHas("\"" + file.string() + "\"");
  tray.waitForItem();
  tray.choose("Auto-save changed files/Every 1 min");
  waitUntilStateHas("\"autoSaveMinutes\": 1");
  // What is typed before the editor listens is lost.
  desktop.observer().waitUntil("the keyboard reaches the editor", [&] {
    desktop.observer().type("x");
    return desktop.observer().text(plan.id, "_NET_WM_NAME").starts_with('*');
  });
  EXPECT_EQ(Folders::read(file), "Some text.\n");
  // On a busy machine the editor may be asked too late for the first time.
  desktop.observer().waitUntil(
      "the document is saved",
      [&] {
        return Folders::read(file).starts_with('x') &&
               !desktop.observer().text(plan.id, "_NET_WM_NAME").starts_with('*');
      },
      130s);
  EXPECT_TRUE(Folders::read(file).ends_with("Some text.\n"));
  desktop.observer().waitUntil("the log says it", [&] { return logLines("autosave: ") == 1; });
  // By the window's title, in which the editor writes an ordinary user's home as "~" and root's in full.
  EXPECT_EQ(logLines("autosave: Mousepad saved "), 1);
  EXPECT_EQ(logLines("/plan.txt - Mousepad"), 1) << Folders::read(desktop.folders().logFile());
}

class InAnEmbeddingTray : public Shell, public ::testing::WithParamInterface<WindowManager> {
 protected:
  InAnEmbeddingTray() : Shell(GetParam()) {}

  void startTray() {
    const auto settings = desktop.folders().root() / "tint2rc";
    desktop.folders().write(settings,
                            "panel_items = S\npanel_size = 100% 30\npanel_position = bottom left horizontal\n"
                            "strut_policy = none\nsystray_icon_size = 22\nsystray_padding = 4 4 4\n");
    tray = desktop.start({"tint2", "-c", settings.string()}, "tint2");
  }
  // The icon is a window inside the tray's, in which it takes its place only after a moment.
  [[nodiscard]] std::optional<Box> icon() {
    const auto wanted = std::string("pellar") + '\0' + "pellar" + '\0';
    auto& observer = desktop.observer();
    std::vector<xcb_window_t> open;
    const auto openChildrenOf = [&](xcb_window_t window) {
      const auto children = observer.childrenOf(window);
      open.insert(open.end(), children.begin(), children.end());
    };
    for (const auto window : observer.topLevels()) openChildrenOf(window);
    while (!open.empty()) {
      const auto window = open.back();
      open.pop_back();
      const auto place = observer.box(window);
      if (place && place->width <= 32 && place->width > 4 && observer.isViewable(window) &&
          observer.text(window, "WM_CLASS") == wanted && isDrawn(window))
        return place;
      openChildrenOf(window);
    }
    return std::nullopt;
  }
  [[nodiscard]] bool isDrawn(xcb_window_t window) {
    const auto picture = desktop.observer().picture(window);
    return picture &&
           std::ranges::any_of(picture->pixels, [&](auto pixel) { return pixel != picture->pixels[0]; });
  }
  void openMenu(int button) {
    std::optional<Box> clicked;
    // A tray that has just started puts its icons elsewhere once more.
    desktop.observer().waitUntil("the icon in the tray opens the menu", [&] {
      const auto place = icon();
      if (place && place != clicked) {
        clicked = place;
        desktop.observer().click(place->x + place->width / 2, place->y + place->height / 2, button);
      }
      return clicked && menu->windows().size() == 1;
    });
    menu->waitUntilOpen();
  }

  std::unique_ptr<Process> tray;
};

PELLAR_FOR_EVERY_WINDOW_MANAGER(InAnEmbeddingTray);

TEST_P(InAnEmbeddingTray, TheMenuHidesTheFrontApplicationAndShowsItAgain) {
  startTray();
  startWithStrip();
  openMenu(3);
  // "Hide for editor"
  menu->choose(2);
  menu->waitUntilClosed();
  strip.waitUntilHidden();
  openMenu(1);
  // "Hidden apps"
  menu->openSubmenu(2);
  menu->choose(0);
  menu->waitUntilClosed();
  waitUntilStripIsBack();
}

TEST_P(InAnEmbeddingTray, TheIconComesToATrayThatIsStartedLater) {
  startWithStrip();
  startTray();
  openMenu(3);
  strike(escapeKey);
  menu->waitUntilClosed();
}

}  // namespace

}  // namespace pellar::e2e
