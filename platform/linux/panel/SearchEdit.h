#pragma once

#include <QLineEdit>
#include <QTimer>
#include <cstdint>

#include "core/Geometry.h"

class QWindow;

namespace pellar {

class QtSearchField;
class X11Panel;

// The native editor of a search field: a window inside the panel's, which looks like the drawing it covers.
class SearchEdit final : public QLineEdit {
 public:
  SearchEdit(QtSearchField& field, X11Panel& panel);
  ~SearchEdit() override;

  // Covers the field with that frame in the panel, at the size that a point has there now.
  void place(const ViewRect& frame);

 protected:
  bool nativeEvent(const QByteArray& type, void* message, qintptr* result) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  bool offerToList(int key);
  // A point in the toolkit's units, which are pixels unless the whole desktop is scaled.
  [[nodiscard]] double unitsPerPoint() const;

  QtSearchField& field_;
  X11Panel& panel_;
  QWindow* parentWindow_;  // stands for the panel's window; owned
  std::uint8_t lastKey_ = 0;
  QTimer lastKeyDone_;  // runs until the last key that was pressed has done its work
};

}  // namespace pellar
