#include "tests/pictures/Likeness.h"

#include <QRegion>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <sstream>

namespace pellar {
namespace {

constexpr int pixelTolerance = 2;  // processors round the blending of edges in more than one way
constexpr double inkRatio = 1.9;
constexpr double signInkRatio = 3;  // a box or a cross is drawn with a thin line or a fat one
constexpr double inkColorTolerance = 80;
constexpr double leastInk = 0.5;  // less is a blank text
constexpr double faintInk = 40;   // what is nearer to the ground is none
constexpr double widthRatio = 1.45;
constexpr int inkLeftTolerance = 8;  // pixels
constexpr int inkWidthTolerance = 8;
constexpr int inkHeightTolerance = 4;

using Channels = std::array<double, 4>;

Channels channels(QRgb pixel) {
  return {static_cast<double>(qRed(pixel)), static_cast<double>(qGreen(pixel)),
          static_cast<double>(qBlue(pixel)), static_cast<double>(qAlpha(pixel))};
}

double distance(const Channels& a, const Channels& b) {
  double most = 0;
  for (std::size_t i = 0; i < a.size(); ++i) most = std::max(most, std::abs(a[i] - b[i]));
  return most;
}

std::string at(const QRect& rect) {
  std::ostringstream out;
  out << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
  return out.str();
}

// What of a text's place is not its ground. The ground is the colour met most often.
struct Ink {
  double amount = 0;  // mean distance from the ground
  Channels color{};   // of the pixel farthest from it
  QRect extent;
};

Ink inkOf(const QImage& image, const QRect& rect) {
  std::vector<QRgb> pixels;
  for (int y = rect.top(); y <= rect.bottom(); ++y)
    for (int x = rect.left(); x <= rect.right(); ++x) pixels.push_back(image.pixel(x, y));
  std::ranges::sort(pixels);
  QRgb ground = pixels.front();
  std::ptrdiff_t most = 0;
  for (auto begin = pixels.begin(); begin != pixels.end();) {
    const auto end = std::upper_bound(begin, pixels.end(), *begin);
    if (end - begin > most) {
      most = end - begin;
      ground = *begin;
    }
    begin = end;
  }
  Ink ink;
  double farthest = -1;
  for (int y = rect.top(); y <= rect.bottom(); ++y) {
    for (int x = rect.left(); x <= rect.right(); ++x) {
      const Channels pixel = channels(image.pixel(x, y));
      const double off = distance(pixel, channels(ground));
      ink.amount += off / static_cast<double>(pixels.size());
      if (off > faintInk) ink.extent |= QRect(x, y, 1, 1);
      if (off <= farthest) continue;
      farthest = off;
      ink.color = pixel;
    }
  }
  return ink;
}

std::string differenceInText(const QImage& picture, const QImage& reference, const QRect& text, bool isSign) {
  const Ink ink = inkOf(picture, text);
  const Ink wanted = inkOf(reference, text);
  const double ratio = isSign ? signInkRatio : inkRatio;
  if (wanted.amount < leastInk && ink.amount < leastInk) return {};
  if (ink.amount > wanted.amount * ratio || wanted.amount > ink.amount * ratio) {
    std::ostringstream out;
    out << "the text at " << at(text) << " has an ink of " << ink.amount << " instead of " << wanted.amount;
    return out.str();
  }
  if (distance(ink.color, wanted.color) > inkColorTolerance)
    return "the text at " + at(text) + " has another colour";
  const auto apart = [](int a, int b, int tolerance) { return std::abs(a - b) > tolerance; };
  if (apart(ink.extent.left(), wanted.extent.left(), inkLeftTolerance) ||
      apart(ink.extent.top(), wanted.extent.top(), inkHeightTolerance) ||
      apart(ink.extent.bottom(), wanted.extent.bottom(), inkHeightTolerance))
    return "the text at " + at(text) + " stands at " + at(ink.extent) + " instead of " + at(wanted.extent);
  const auto [narrow, wide] = std::minmax({ink.extent.width(), wanted.extent.width()});
  if (!isSign && apart(wide, narrow, inkWidthTolerance) && wide > narrow * widthRatio) {
    return "the text at " + at(text) + " is " + std::to_string(ink.extent.width()) + " wide instead of " +
           std::to_string(wanted.extent.width());
  }
  return {};
}

}  // namespace

std::string difference(const QImage& picture, const QImage& reference, const std::vector<TextPlace>& texts) {
  if (reference.isNull()) return "there is nothing to compare with";
  if (picture.size() != reference.size()) {
    return "the size is " + at(picture.rect()) + " instead of " + at(reference.rect());
  }
  const QImage seen = picture.convertToFormat(QImage::Format_ARGB32);
  const QImage wanted = reference.convertToFormat(QImage::Format_ARGB32);
  QRegion textual;
  for (const auto& [rect, reachX, reachY, isSign] : texts)
    textual += rect.adjusted(-reachX, -reachY, reachX, reachY);
  for (int y = 0; y < seen.height(); ++y) {
    for (int x = 0; x < seen.width(); ++x) {
      const QRgb a = seen.pixel(x, y);
      const QRgb b = wanted.pixel(x, y);
      if (a == b || textual.contains(QPoint(x, y))) continue;
      // A transparent pixel has no colour.
      const double off = distance(channels(qPremultiply(a)), channels(qPremultiply(b)));
      if (off <= pixelTolerance) continue;
      std::ostringstream out;
      out << "the pixel " << x << ',' << y << " is " << std::hex << a << " instead of " << b;
      return out.str();
    }
  }
  for (const TextPlace& text : texts) {
    const QRect inside = text.rect.intersected(seen.rect());
    if (inside.isEmpty()) continue;
    if (const auto why = differenceInText(seen, wanted, inside, text.isSign); !why.empty()) return why;
  }
  return {};
}

}  // namespace pellar
