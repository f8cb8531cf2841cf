#include "platform/linux/panel/X11PanelPicture.h"

#include <cmath>
#include <utility>

#include "platform/linux/drawing/PanelBackground.h"
#include "platform/linux/drawing/QtCanvas.h"
#include "platform/linux/drawing/Sprite.h"
#include "platform/linux/panel/QtListView.h"
#include "platform/linux/panel/QtSearchField.h"
#include "platform/linux/panel/X11PanelWindow.h"

namespace pellar {
namespace {

// More rectangles than this are painted as the one around them.
constexpr int mostDirtyParts = 8;

}  // namespace

QRect X11PanelPicture::bounds() const {
  return {0, 0, window_.frame().width, window_.frame().height};
}

QRect X11PanelPicture::outerPixels(const ViewRect& rect) const {
  const int left = static_cast<int>(std::floor(rect.minX() * scale_));
  const int top = static_cast<int>(std::floor(rect.minY() * scale_));
  return {left, top, static_cast<int>(std::ceil(rect.maxX() * scale_)) - left,
          static_cast<int>(std::ceil(rect.maxY() * scale_)) - top};
}

ViewRect X11PanelPicture::points(const QRect& pixels) const {
  return {pixels.x() / scale_, pixels.y() / scale_, pixels.width() / scale_, pixels.height() / scale_};
}

void X11PanelPicture::paint(const PanelContent& content) {
  const QRegion dirty = std::exchange(dirty_, QRegion()).intersected(bounds());
  if (dirty.isEmpty()) return;
  if (pixels_.size() != bounds().size()) {
    pixels_ = QImage(bounds().size(), QImage::Format_ARGB32_Premultiplied);
    // Whatever changed the size asked for everything; a part alone would leave the rest without content.
    paintPart(bounds(), content);
  } else if (dirty.rectCount() > mostDirtyParts) {
    paintPart(dirty.boundingRect(), content);
  } else {
    for (const QRect& part : dirty) paintPart(part, content);
  }
  window_.flush();
}

void X11PanelPicture::paintPart(const QRect& part, const PanelContent& content) {
  const bool blends = services_.compositor.blends();
  if (glass_) {
    PanelBackground::drawUnder(pixels_, part, blends);
  } else {
    fill(pixels_, part, 0);
  }
  QtCanvas canvas = services_.canvasOn(pixels_, part, scale_);
  const ViewRect dirty = points(part);
  if (content.view != nullptr) content.view->draw(canvas, dirty);
  for (const QtSearchField* field : content.fields) field->drawAtRest(canvas, dirty);
  for (QtListView* list : content.lists) {
    QtCanvas clipped = services_.canvasOn(pixels_, part.intersected(outerPixels(list->frame())), scale_);
    list->draw(clipped, dirty);
  }
  if (glass_) PanelBackground::drawOver(pixels_, part, scale_, blends);
  window_.put(pixels_, part);
}

void X11PanelPicture::sendAgain(const QRect& part) {
  window_.put(pixels_, part);
  window_.flush();
}

}  // namespace pellar
