#include "tests/e2e/tour/Photographer.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>
#include <array>
#include <cctype>
#include <cstdio>
#include <stdexcept>

#include "tests/e2e/XReply.h"
#include "tests/e2e/tools/Photograph.h"

namespace pellar::e2e {

namespace {

// So many looks in a row must show the same before the desktop counts as drawn.
constexpr int stillLooks = 4;

bool isNumberedPicture(const std::filesystem::path& file) {
  const auto name = file.filename().string();
  return name.size() > 3 && std::isdigit(static_cast<unsigned char>(name[0])) != 0 &&
         std::isdigit(static_cast<unsigned char>(name[1])) != 0 && name[2] == '-' &&
         file.extension() == ".png";
}

void drawPointer(QImage& picture, const QPointF& tip) {
  const QPolygonF arrow{{tip, tip + QPointF(0, 17), tip + QPointF(4, 13), tip + QPointF(7, 20),
                         tip + QPointF(10, 19), tip + QPointF(7, 12), tip + QPointF(12, 12)}};
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::white);
  painter.setBrush(Qt::black);
  painter.drawPolygon(arrow);
}

}  // namespace

Photographer::Photographer(XObserver& observer, std::filesystem::path folder)
    : observer_(observer), folder_(std::move(folder)) {
  std::filesystem::create_directories(folder_);
  for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
    if (isNumberedPicture(entry.path())) std::filesystem::remove(entry.path());
  }
}

std::filesystem::path Photographer::take(const std::string& name) {
  QImage picture;
  int still = 0;
  observer_.waitUntil("the desktop holds still", [&] {
    QImage now = photograph(observer_.connection(), observer_.root());
    still = !now.isNull() && now == picture ? still + 1 : 0;
    picture = std::move(now);
    return still >= stillLooks;
  });
  const auto cookie = xcb_query_pointer(observer_.connection(), observer_.root());
  const XReply<xcb_query_pointer_reply_t> pointer(
      xcb_query_pointer_reply(observer_.connection(), cookie, nullptr));
  if (pointer) drawPointer(picture, QPointF(pointer->root_x, pointer->root_y));

  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "%02d-", ++taken_);
  auto file = folder_ / (number.data() + name + ".png");
  if (!picture.save(QString::fromStdString(file.string()), "PNG"))
    throw std::runtime_error("cannot write " + file.string());
  return file;
}

}  // namespace pellar::e2e
