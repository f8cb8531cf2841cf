#include "platform/linux/desktop/MenuBarIcon.h"

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QRectF>

namespace pellar::MenuBarIcon {
namespace {

constexpr int sides[] = {16, 22, 32, 44, 64};
// On a grid of 16 x 16.
constexpr QRectF behind{1.5, 2.5, 9, 9};
constexpr QRectF front{5.5, 5.5, 9, 8};
constexpr double cornerRadius = 1.5;

QPixmap drawn(int side) {
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 16.0, side / 16.0);
  painter.setPen(QPen(QColor(40, 44, 52), 1));
  painter.setBrush(QColor(170, 176, 186));
  painter.drawRoundedRect(behind, cornerRadius, cornerRadius);
  painter.setBrush(QColor(245, 246, 248));
  painter.drawRoundedRect(front, cornerRadius, cornerRadius);
  return picture;
}

}  // namespace

QIcon make() {
  QIcon icon;
  for (const int side : sides) icon.addPixmap(drawn(side));
  return icon;
}

}  // namespace pellar::MenuBarIcon
