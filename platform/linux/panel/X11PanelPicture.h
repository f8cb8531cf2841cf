#pragma once

#include <QImage>
#include <QRegion>
#include <vector>

#include "platform/View.h"
#include "platform/linux/panel/X11PanelServices.h"

namespace pellar {

class QtListView;
class QtSearchField;
class X11PanelWindow;

// What a panel shows: its ground, its view, and the search fields and lists in it.
struct PanelContent {
  View* view = nullptr;
  std::vector<QtSearchField*> fields;
  std::vector<QtListView*> lists;
};

// The picture in a panel's window. It is painted where it is out of date, and only that is sent.
class X11PanelPicture {
 public:
  // `window` outlives this; `scale` is its pixels to a point.
  X11PanelPicture(X11PanelServices& services, X11PanelWindow& window, bool glass, double scale)
      : services_(services), window_(window), glass_(glass), scale_(scale) {}

  void setScale(double scale) { scale_ = scale; }

  // All of the window, in pixels from its top left corner.
  [[nodiscard]] QRect bounds() const;
  // The whole pixels that a rectangle of the view touches.
  [[nodiscard]] QRect outerPixels(const ViewRect& rect) const;
  [[nodiscard]] ViewRect points(const QRect& pixels) const;

  // Out of date from now on: everything, or what a rectangle of the view touches.
  void outdate() { dirty_ = bounds(); }
  void outdate(const ViewRect& rect) { dirty_ += outerPixels(rect).intersected(bounds()); }
  [[nodiscard]] bool isOutOfDate() const { return !dirty_.isEmpty(); }

  // Paints what is out of date and sends it; nothing happens where nothing is.
  void paint(const PanelContent& content);
  // Sends a part again as it is, in pixels.
  void sendAgain(const QRect& part);

 private:
  void paintPart(const QRect& part, const PanelContent& content);

  X11PanelServices& services_;
  X11PanelWindow& window_;
  bool glass_;
  double scale_;
  QImage pixels_;
  QRegion dirty_;
};

}  // namespace pellar
