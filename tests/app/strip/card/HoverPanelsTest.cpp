#include <gtest/gtest.h>

#include "app/strip/card/HoverPanels.h"
#include "tests/support/PanelReader.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

class Hovering : public testing::Test {
 protected:
  static constexpr ScreenRect tab{300, 600, 160, 26};

  std::shared_ptr<OfficeWindow> add(const std::string& title, std::optional<std::string> path = {}) {
    auto window =
        std::make_shared<OfficeWindow>(mac.accessibility(), editor.open(title).element(),
                                       TrackedApp{"org.example.editor", "Editor", {}}, editor.pid());
    window->title = title;
    window->path = std::move(path);
    picture->windows.push_back(window);
    return window;
  }
  void restOn(const OfficeWindow& window) {
    panels.tabHovered(window.id(), tab);
    mac.advance(cardDelay);
  }

  SimMac mac;
  PanelReader hover{mac};
  SimApplication editor = mac.launch({.bundleId = "org.example.editor", .name = "Editor"});
  std::shared_ptr<TrackedPicture> picture = std::make_shared<TrackedPicture>();
  std::shared_ptr<WindowTracker> tracker =
      WindowTracker::create(mac.accessibility(), mac.workspace(), mac.mainLoop());
  HoverPanels panels{
      mac.platform(), picture, std::make_shared<WindowActions>(mac.platform(), tracker, picture),
      std::make_shared<DocumentPaths>(mac.platform(), tracker, std::make_shared<Automation>(mac.platform()))};
};

TEST_F(Hovering, MakesNoPanelBeforeItIsNeeded) {
  panels.tabHovered(std::nullopt, std::nullopt);
  panels.zoomHovered(std::nullopt);
  panels.hide();
  EXPECT_TRUE(mac.panels().all().empty());
}

TEST_F(Hovering, NamesTheFileAndItsFolder) {
  const std::string home = mac.home().string();
  restOn(*add("Report", home + "/Documents/Report.docx"));
  EXPECT_EQ(hover.cardTexts()[0], "Report.docx");
  EXPECT_EQ(hover.cardTexts()[1], "~/Documents");
  restOn(*add("Plan", home + "/Plan.docx"));
  EXPECT_EQ(hover.cardTexts()[0], "Plan.docx");
  EXPECT_EQ(hover.cardTexts()[1], "~");
  restOn(*add("Q3", "/Volumes/Shared/Team/Q3.docx"));
  EXPECT_EQ(hover.cardTexts()[1], "\u2026/Shared/Team");
}

TEST_F(Hovering, NamesFoldersNearTheRootInFull) {
  restOn(*add("a", "/a.txt"));
  EXPECT_EQ(hover.cardTexts()[1], "/");
  restOn(*add("b", "/Volumes/b.txt"));
  EXPECT_EQ(hover.cardTexts()[1], "/Volumes");
  restOn(*add("c", "/Volumes/Shared/c.txt"));
  EXPECT_EQ(hover.cardTexts()[1], "/Volumes/Shared");
}

TEST_F(Hovering, NamesOnlyTheWindowWithoutAFile) {
  restOn(*add("Untitled 3"));
  EXPECT_EQ(hover.cardTexts(),
            (std::vector<std::string>{"Untitled 3", tool::minimize, tool::zoom, tool::closeWindow}));
  EXPECT_EQ(hover.card()->frame().height, 58);
}

TEST_F(Hovering, ATabThatIsNotKnownOrHasNoPlaceEndsTheCard) {
  const auto window = add("Report");
  restOn(*window);
  panels.tabHovered(window->id() + 1, tab);
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());

  restOn(*window);
  EXPECT_TRUE(hover.cardShown());
  panels.tabHovered(window->id(), std::nullopt);
  mac.advance(closeDelay);
  EXPECT_FALSE(hover.cardShown());
}

TEST_F(Hovering, AButtonOfAWindowThatIsGoneDoesNothing) {
  restOn(*add("Report"));
  picture->windows.clear();
  mac.pointer().click(hover.cardButton(tool::closeWindow));
  EXPECT_FALSE(hover.cardShown());
  EXPECT_EQ(editor.windowsFrontToBack().size(), 1U);
}

TEST_F(Hovering, ATilePickedWithoutAFocusedWindowDoesNothing) {
  const auto window = add("Report");
  panels.zoomHovered(tab);
  panels.pictureChanged();
  ASSERT_TRUE(hover.pickerShown()) << "it belongs to no window that could be gone";
  mac.pointer().click(PanelReader::onScreen(*hover.picker(), {30, 40}));
  EXPECT_FALSE(hover.pickerShown());
  EXPECT_EQ(editor.windowsFrontToBack().front().frame(), (AxRect{100, 200, 900, 600}));
}

}  // namespace
}  // namespace pellar
