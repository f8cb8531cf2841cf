#include "app/strip/tabs/StripDrawing.h"

namespace pellar {
namespace {

constexpr Font labelFont{12.5, FontWeight::regular};
constexpr Font closeFont{13, FontWeight::regular};
constexpr double symbolSide = 14;
constexpr double markerSide = 9;

// Where a shade is too little, a line around it.
void drawOutline(const ViewRect& rect, Canvas& canvas) {
  constexpr double line = 2;
  constexpr Color ground{0, 0, 0, 1, std::nullopt};
  canvas.fillRoundedRect(rect, 8, Color::white());
  canvas.fillRoundedRect(rect.grown(-line), 8 - line, ground);
}

void drawTab(const TabItem& tab, const ViewRect& rect, bool raised, const Color& accent, Canvas& canvas) {
  if (tab.active && canvas.increasesContrast()) {
    drawOutline(rect, canvas);
  } else if (tab.active) {
    canvas.fillRoundedRect(rect, 8, Color::white(0.2));
  } else if (raised) {
    canvas.fillRoundedRect(rect, 8, Color::white(0.1));
  }

  const bool roomForLabel = rect.width >= StripLayout::labelMinimumTabWidth;
  const double markerX = roomForLabel ? rect.minX() + 9 : rect.midX() - markerSide / 2;
  canvas.fillRoundedRect({markerX, rect.midY() - markerSide / 2, markerSide, markerSide}, 2, accent);

  if (tab.tag) {
    canvas.fillRoundedRect({rect.minX() + 6, rect.maxY() - 3, rect.width - 12, 2}, 1, *tab.tag);
  }
  if (!roomForLabel) return;

  canvas.drawTruncatedText(tab.label, {rect.minX() + 24, rect.midY() - 8, rect.width - 46, 16}, labelFont,
                           receding(tab.active ? 1 : 0.78, canvas));
  const ViewRect close = StripLayout::closeSquare(rect);
  canvas.drawText("×", {close.minX() + 3, close.minY() - 2}, closeFont, receding(0.5, canvas));
}

Color toolColor(StripAction action, bool autoSaveOn, const Canvas& canvas) {
  if (action == StripAction::closeWindow) return receding(0.9, canvas);
  if (action == StripAction::autoSave && autoSaveOn) return Color::of(SystemColor::green);
  return receding(0.75, canvas);
}

void drawTool(const PlacedTool& placed, bool autoSaveOn, Canvas& canvas) {
  const Color color = toolColor(placed.tool.action, autoSaveOn, canvas);
  const ViewRect& rect = placed.rect;
  if (placed.tool.action == StripAction::search) {
    canvas.drawSymbol(Symbol::magnifyingGlass,
                      {rect.midX() - symbolSide / 2, rect.midY() - symbolSide / 2, symbolSide, symbolSide},
                      color);
  } else {
    canvas.drawCenteredText(placed.tool.text, rect, StripLayout::toolFont, color);
  }
}

}  // namespace

void drawStrip(const StripLayout& layout, const StripPicture& picture, Canvas& canvas,
               const ViewRect& dirty) {
  for (std::size_t i = 0; i < picture.tabs.size(); ++i) {
    const bool isDragged = picture.dragged && picture.dragged->index == i;
    const ViewRect rect = isDragged ? layout.movedTabRect(i, picture.dragged->x) : layout.tabRect(i);
    if (!rect.intersects(dirty)) continue;
    drawTab(picture.tabs[i], rect, isDragged || picture.hovered == i, picture.accent, canvas);
  }

  if (picture.dragged) {
    const auto [index, x] = *picture.dragged;
    const ViewRect marker = layout.dropMarker(index, layout.dropIndex(index, x));
    if (marker.intersects(dirty)) canvas.fillRoundedRect(marker, 1, Color::white(0.9));
  }

  for (const PlacedTool& placed : layout.tools()) {
    if (placed.rect.intersects(dirty)) drawTool(placed, picture.autoSaveOn, canvas);
  }
}

}  // namespace pellar
