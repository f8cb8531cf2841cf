#pragma once

#include <QImage>
#include <QRect>

#include "platform/Canvas.h"

namespace pellar {

// A small picture (ARGB32, premultiplied) to be drawn at a point, and where it stands from there.
struct Sprite {
  QImage pixels;
  int left = 0;
  int top = 0;
  double width = 0;  // of a text: how far the next one would stand from it
};

// What is drawn over and over is blended by hand: setting up the toolkit's painter costs more than these few
// pixels, most of all after a pause, when nothing of it is left in the processor's caches.

// Lays `sprite` over `target` with its point at (x, y), inside `clip`.
void blend(const Sprite& sprite, int x, int y, QImage& target, const QRect& clip);
// Replaces what is in `rect`.
void fill(QImage& target, const QRect& rect, QRgb premultiplied);
// Lays a colour over what is in `rect`.
void tint(QImage& target, const QRect& rect, QRgb premultiplied);
// Keeps of `target` as much as `mask` covers, in the mask's rectangle at (x, y), inside `clip`.
void keepCovered(const QImage& mask, int x, int y, QImage& target, const QRect& clip);

// A colour as one pixel.
[[nodiscard]] QRgb premultiplied(const Color& color);

}  // namespace pellar
