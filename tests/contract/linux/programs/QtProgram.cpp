// qt_program FILE: a window of a current toolkit with a File menu whose Save writes one line to a file, once.
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QString file = QString::fromLocal8Bit(argc > 1 ? argv[1] : "");
  QMainWindow window;
  window.setWindowTitle(QFileInfo(file).fileName());
  QMenu* menu = window.menuBar()->addMenu(QStringLiteral("&File"));
  menu->addAction(QStringLiteral("&New"));
  QAction* save = menu->addAction(QStringLiteral("&Save"));
  QObject::connect(save, &QAction::triggered, &window, [&file, save] {
    QFile stream(file);
    if (stream.open(QIODevice::WriteOnly)) stream.write("saved\n");
    save->setEnabled(false);
  });
  window.resize(400, 300);
  window.show();
  return QApplication::exec();
}
