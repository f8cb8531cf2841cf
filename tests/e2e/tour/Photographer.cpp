#include "tests/e2e/tour/Photographer.h"

#include <QPainter>
#include <QPolygonF>
#include <array>
#include <cctype>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "tests/e2e/tools/Photograph.h"

namespace pellar::e2e {

namespace {

// So many looks must show what one did before the desktop counts as drawn.
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

Photographer::Photographer(std::filesystem::path folder) : folder_(std::move(folder)) {
  std::filesystem::create_directories(folder_);
  for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
    if (isNumberedPicture(entry.path())) std::filesystem::remove(entry.path());
  }
}

std::filesystem::path Photographer::take(XObserver& desktop, const std::string& name) {
  // A text cursor blinks, so two pictures may take turns.
  struct Look {
    QImage picture;
    int times = 0;
  };
  Look last;
  Look before;
  desktop.waitUntil("the desktop holds still", [&] {
    QImage now = photograph(desktop.connection(), desktop.root());
    if (now.isNull()) return false;
    if (now != last.picture) {
      std::swap(last, before);
      if (now != last.picture) last = {std::move(now), 0};
    }
    return ++last.times > stillLooks;
  });
  return save(desktop, std::move(last.picture), name);
}

std::filesystem::path Photographer::takeAtOnce(XObserver& desktop, const std::string& name) {
  return save(desktop, photograph(desktop.connection(), desktop.root()), name);
}

std::filesystem::path Photographer::save(XObserver& desktop, QImage picture, const std::string& name) {
  const Box pointer = desktop.pointer();
  drawPointer(picture, QPointF(pointer.x, pointer.y));

  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "%02d-", ++taken_);
  auto file = folder_ / (number.data() + name + ".png");
  if (!picture.save(QString::fromStdString(file.string()), "PNG"))
    throw std::runtime_error("cannot write " + file.string());
  return file;
}

}  // namespace pellar::e2e
