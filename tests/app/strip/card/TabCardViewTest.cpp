#include <gtest/gtest.h>

#include "app/strip/card/TabCardView.h"
#include "platform/sim/SimMac.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

constexpr Font titleFont{13, FontWeight::medium};
constexpr Font folderFont{11, FontWeight::regular};
constexpr Font buttonFont{12, FontWeight::regular};

// A card's view in a panel that is as wide as it likes. A character of the title is 7.15 points wide, one of
// the folder 6.05.
class CardView : public testing::Test {
 protected:
  ~CardView() override { panel->setView(nullptr); }

  void show(const std::string& title, const std::optional<std::string>& folder) {
    view.set(7, title, folder);
    panel->setView(&view);
    panel->setFrame({100, 100, view.preferredWidth(), view.titleNeedsTwoLines() ? 74.0 : 58.0}, true);
    panel->orderFrontRegardless();
    mac.settle();
  }
  [[nodiscard]] const std::vector<DrawnItem>& drawn() const { return panel->drawing().items(); }
  [[nodiscard]] std::vector<DrawnItem> grounds() const {
    std::vector<DrawnItem> found;
    for (const auto& item : drawn())
      if (item.kind == DrawnItem::Kind::roundedRect) found.push_back(item);
    return found;
  }
  [[nodiscard]] const DrawnItem& text(const std::string& content) const {
    for (const auto& item : drawn())
      if (item.text == content) return item;
    throw std::runtime_error("not on the card: " + content);
  }
  static MouseEvent at(ViewPoint point) { return {point, {}, false, 1}; }
  [[nodiscard]] ViewPoint middleOf(StripAction action) const {
    for (const auto& [rect, each] : view.buttonRects())
      if (each == action) return {rect.midX(), rect.midY()};
    throw std::runtime_error("no such button");
  }

  SimMac mac;
  std::unique_ptr<SimPanel> panel{static_cast<SimPanel*>(
      mac.platform().panels.makePanel({.contentSize = {200, 58}, .level = PanelLevel::popUpMenu}).release())};
  std::vector<std::string> events;
  TabCardView view{
      panel->host(), [this](WindowId id, StripAction action) {
        events.push_back("action " + std::to_string(static_cast<int>(action)) + " of " + std::to_string(id));
      }};
};

TEST_F(CardView, IsWideEnoughForTheTitleBesideTheButtons) {
  view.set(1, std::string(15, 'x'), std::nullopt);
  EXPECT_NEAR(view.preferredWidth(), 15 * 7.15 + 24 + 90, 1e-9);
  EXPECT_FALSE(view.titleNeedsTwoLines());
}

TEST_F(CardView, IsWideEnoughForTheFolder) {
  view.set(1, "a", std::string(30, 'x'));
  EXPECT_NEAR(view.preferredWidth(), 30 * 6.05 + 24, 1e-9);
}

TEST_F(CardView, IsNeitherNarrowerThan180NorWiderThan260) {
  view.set(1, "", std::nullopt);
  EXPECT_EQ(view.preferredWidth(), 180);
  view.set(1, "", "");
  EXPECT_EQ(view.preferredWidth(), 180);
  view.set(1, "a", std::string(100, 'x'));
  EXPECT_EQ(view.preferredWidth(), 260);
  view.set(1, std::string(100, 'x'), std::nullopt);
  EXPECT_EQ(view.preferredWidth(), 260);
}

TEST_F(CardView, NeedsTwoLinesOnlyForATitleThatDoesNotFitBesideTheButtonsOfTheWidestCard) {
  for (std::size_t length = 0; length <= 20; ++length) {
    view.set(1, std::string(length, 'x'), std::nullopt);
    EXPECT_FALSE(view.titleNeedsTwoLines()) << length;
  }
  view.set(1, std::string(21, 'x'), std::nullopt);
  EXPECT_TRUE(view.titleNeedsTwoLines());
}

TEST_F(CardView, ShowsTitleFolderAndThreeButtons) {
  show("Report.docx", "~/Documents");
  const double width = view.preferredWidth();
  ASSERT_EQ(drawn().size(), 5U);

  const DrawnItem& title = text("Report.docx");
  EXPECT_EQ(title.kind, DrawnItem::Kind::truncatedText);
  EXPECT_EQ(title.rect, (ViewRect{12, 11, width - 24 - 90, 17}));
  EXPECT_EQ(title.color, Color::white());
  EXPECT_EQ(title.font, titleFont);
  EXPECT_EQ(title.shown, "Report.docx");

  const DrawnItem& folder = text("~/Documents");
  EXPECT_EQ(folder.kind, DrawnItem::Kind::middleTruncatedText);
  EXPECT_EQ(folder.rect, (ViewRect{12, 32, width - 24, 15}));
  EXPECT_EQ(folder.color, Color::white(0.55));
  EXPECT_EQ(folder.font, folderFont);

  const auto buttons = view.buttonRects();
  const std::vector<std::pair<std::string, StripAction>> expected{
      {"\u2013", StripAction::minimize}, {"\u25a1", StripAction::zoom}, {"\u2715", StripAction::closeWindow}};
  ASSERT_EQ(buttons.size(), 3U);
  for (std::size_t k = 0; k < 3; ++k) {
    EXPECT_EQ(buttons[k].first, (ViewRect{width - 6 - 30 * (3 - static_cast<double>(k)), 9, 26, 22}));
    EXPECT_EQ(buttons[k].second, expected[k].second);
    const DrawnItem& button = text(expected[k].first);
    EXPECT_EQ(button.kind, DrawnItem::Kind::centeredText);
    EXPECT_NEAR(button.center().x, buttons[k].first.midX(), 1e-9);
    EXPECT_NEAR(button.center().y, buttons[k].first.midY(), 1e-9);
    EXPECT_EQ(button.color, Color::white(0.85));
    EXPECT_EQ(button.font, buttonFont);
  }
}

TEST_F(CardView, WrapsALongTitleOverTwoLinesAndMovesTheFolderDown) {
  show("Minutes of the yearly meeting.docx", "~/Documents");
  const DrawnItem& title = text("Minutes of the yearly meeting.docx");
  EXPECT_EQ(title.kind, DrawnItem::Kind::wrappedText);
  EXPECT_EQ(title.rect, (ViewRect{12, 11, 146, 32}));
  EXPECT_EQ(title.shown, "Minutes of the\nyearly meeting.docx\n");
  EXPECT_EQ(text("~/Documents").rect, (ViewRect{12, 46, 236, 15}));
}

TEST_F(CardView, ATitleTooLongForTwoLinesIsCutOffInTheSecond) {
  const std::string title = "Minutes of the yearly meeting of all members and their guests.docx";
  show(title, std::nullopt);
  EXPECT_EQ(text(title).shown, "Minutes of the\nyearly meeting of a\u2026\n");
}

TEST_F(CardView, KeepsBothEndsOfALongFolder) {
  show("a", "~/Clients/Anderson and Sons/Contracts/2024/Final");
  EXPECT_EQ(text("~/Clients/Anderson and Sons/Contracts/2024/Final").shown,
            "~/Clients/Anderson \u2026ontracts/2024/Final");
}

TEST_F(CardView, ShowsNothingInTheFoldersPlaceWithoutOne) {
  show("Untitled", std::nullopt);
  EXPECT_EQ(drawn().size(), 4U);
}

TEST_F(CardView, HighlightsTheButtonUnderThePointerTheClosingOneInRed) {
  show("Report.docx", std::nullopt);
  EXPECT_TRUE(grounds().empty());
  view.mouseMoved(at(middleOf(StripAction::zoom)));
  mac.settle();
  ASSERT_EQ(grounds().size(), 1U);
  EXPECT_EQ(grounds()[0].rect, view.buttonRects()[1].first);
  EXPECT_EQ(grounds()[0].radius, 6);
  EXPECT_EQ(grounds()[0].color, Color::white(0.18));

  view.mouseMoved(at(middleOf(StripAction::closeWindow)));
  mac.settle();
  ASSERT_EQ(grounds().size(), 1U);
  EXPECT_EQ(grounds()[0].rect, view.buttonRects()[2].first);
  EXPECT_EQ(grounds()[0].color.system, SystemColor::red);
  EXPECT_EQ(grounds()[0].color.alpha, 0.8);
  // The ground lies under the sign.
  EXPECT_EQ(drawn().back().text, "\u2715");

  view.mouseExited();
  mac.settle();
  EXPECT_TRUE(grounds().empty());
  EXPECT_FALSE(panel->drawing().isTorn());
}

TEST_F(CardView, RepaintsOnlyWhenAnotherButtonIsUnderThePointer) {
  show("Report.docx", std::nullopt);
  view.mouseMoved(at(middleOf(StripAction::zoom)));
  mac.settle();
  const auto before = panel->simHost().repaints().size();
  const ViewPoint middle = middleOf(StripAction::zoom);
  view.mouseMoved(at({middle.x + 2, middle.y + 1}));
  mac.settle();
  EXPECT_EQ(panel->simHost().repaints().size(), before);
  view.mouseMoved(at({20, 20}));
  mac.settle();
  EXPECT_EQ(panel->simHost().repaints().size(), before + 1);
}

TEST_F(CardView, BetweenTwoButtonsThereIsNone) {
  show("Report.docx", std::nullopt);
  const ViewRect zoom = view.buttonRects()[1].first;
  view.mouseMoved(at({zoom.maxX(), zoom.midY()}));
  mac.settle();
  EXPECT_TRUE(grounds().empty());
  view.mouseMoved(at({zoom.maxX() - 0.5, zoom.minY()}));
  mac.settle();
  EXPECT_EQ(grounds().size(), 1U);
}

TEST_F(CardView, ReportsAPressedButtonWithItsTabAndThenThatItActed) {
  show("Report.docx", std::nullopt);
  view.onChosen = [this] { events.emplace_back("acted"); };
  view.mouseDown(at(middleOf(StripAction::minimize)));
  EXPECT_EQ(events, (std::vector<std::string>{"action 8 of 7", "acted"}));
}

TEST_F(CardView, AClickBesideTheButtonsDoesNothing) {
  show("Report.docx", std::nullopt);
  view.onChosen = [this] { events.emplace_back("acted"); };
  view.mouseDown(at({20, 20}));
  EXPECT_TRUE(events.empty());
}

TEST_F(CardView, TellsOfThePointerComingAndGoing) {
  view.onHoverChanged = [this](bool inside) { events.emplace_back(inside ? "in" : "out"); };
  view.mouseEntered();
  view.mouseExited();
  EXPECT_EQ(events, (std::vector<std::string>{"in", "out"}));
}

TEST_F(CardView, MayBeDoneAwayWithByItsOwnButton) {
  auto doomed = std::unique_ptr<TabCardView>();
  bool acted = false;
  doomed = std::make_unique<TabCardView>(panel->host(), [&](WindowId, StripAction) { doomed.reset(); });
  doomed->onChosen = [&acted] { acted = true; };
  doomed->mouseDown(at(doomed->buttonRects()[0].first.origin()));
  EXPECT_FALSE(acted);
}

}  // namespace
}  // namespace pellar
