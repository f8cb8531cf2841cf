#include "app/strip/card/TabCardView.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "core/Notify.h"

namespace pellar {
namespace {

struct Button {
  std::string_view text;
  StripAction action;
};

constexpr std::array<Button, 3> buttons{
    {{"\u2013", StripAction::minimize}, {"\u25a1", StripAction::zoom}, {"\u2715", StripAction::closeWindow}}};
constexpr double buttonWidth = 26;
constexpr double buttonPitch = 30;
constexpr double buttonRoom = buttonPitch * static_cast<double>(buttons.size());
constexpr double margin = 12;  // on each side of the texts
constexpr double narrowest = 180;
constexpr double widest = 260;

constexpr Font titleFont{13, FontWeight::medium};
constexpr Font subtitleFont{11, FontWeight::regular};
constexpr Font buttonFont{12, FontWeight::regular};

}  // namespace

TabCardView::TabCardView(ViewHost& host, ActionHandler onAction)
    : ChoiceView(host), onAction_(std::move(onAction)) {}

void TabCardView::set(WindowId id, std::string title, std::optional<std::string> subtitle) {
  id_ = id;
  title_ = std::move(title);
  subtitle_ = std::move(subtitle);
  host().setNeedsDisplay();
  host().accessibleElementChanged();
}

double TabCardView::preferredWidth() const {
  double wanted = widthForTitle();
  if (subtitle_) wanted = std::max(wanted, host().textMeasure().width(*subtitle_, subtitleFont) + 2 * margin);
  return std::clamp(wanted, narrowest, widest);
}

double TabCardView::widthForTitle() const {
  return host().textMeasure().width(title_, titleFont) + 2 * margin + buttonRoom;
}

bool TabCardView::titleNeedsTwoLines() const {
  return widthForTitle() > widest;
}

std::vector<std::pair<ViewRect, StripAction>> TabCardView::buttonRects() const {
  std::vector<std::pair<ViewRect, StripAction>> rects;
  double x = host().bounds().width - 6 - buttonRoom;
  for (const Button& button : buttons) {
    rects.push_back({{x, 9, buttonWidth, 22}, button.action});
    x += buttonPitch;
  }
  return rects;
}

ViewRect TabCardView::titleRect() const {
  return {margin, 11, host().bounds().width - 2 * margin - buttonRoom, titleNeedsTwoLines() ? 32.0 : 17.0};
}

ViewRect TabCardView::subtitleRect() const {
  return {margin, titleNeedsTwoLines() ? 46.0 : 32.0, host().bounds().width - 2 * margin, 15};
}

AccessibleElement TabCardView::describeWhole() const {
  AccessibleElement card{
      .id = "card", .name = title_, .help = subtitle_.value_or(""), .frame = host().bounds()};
  card.children.push_back(
      {.id = "title", .role = AccessibleRole::text, .name = title_, .frame = titleRect()});
  if (subtitle_) {
    card.children.push_back(
        {.id = "folder", .role = AccessibleRole::text, .name = *subtitle_, .frame = subtitleRect()});
  }
  return card;
}

void TabCardView::draw(Canvas& canvas, const ViewRect& /*dirty*/) {
  if (titleNeedsTwoLines()) {
    canvas.drawWrappedText(title_, titleRect(), 2, titleFont, Color::white());
  } else {
    canvas.drawTruncatedText(title_, titleRect(), titleFont, Color::white());
  }
  if (subtitle_)
    canvas.drawMiddleTruncatedText(*subtitle_, subtitleRect(), subtitleFont, receding(0.55, canvas));

  const auto rects = buttonRects();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    const auto& [rect, action] = rects[i];
    if (isLit(action)) {
      Color ground = Color::white(0.18);
      if (action == StripAction::closeWindow) {
        ground = Color::of(SystemColor::red);
        ground.alpha = 0.8;
      }
      canvas.fillRoundedRect(rect, 6, ground);
    }
    canvas.drawCenteredText(buttons[i].text, rect, buttonFont, receding(0.85, canvas));
  }
}

void TabCardView::choose(StripAction action) {
  notify(onAction_, id_, action);
}

}  // namespace pellar
