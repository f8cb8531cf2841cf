#pragma once

#include <QLineEdit>

class QWindow;

namespace pellar {

class QtSearchField;
class X11Panel;

// The native editor of a search field: a window inside the panel's, which looks like the drawing it covers.
class SearchEdit final : public QLineEdit {
 public:
  SearchEdit(QtSearchField& field, X11Panel& panel);
  ~SearchEdit() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  bool offerToList(int key);

  QtSearchField& field_;
  X11Panel& panel_;
  QWindow* parentWindow_;  // stands for the panel's window; owned
};

}  // namespace pellar
