// qt_program FILE: a window of a current toolkit with a File menu whose Save writes one line to a file, once,
// and whose "New Kind" leads to three kinds that write their names; the second has a key.
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
  QMenu* kinds = menu->addMenu(QStringLiteral("New &Kind"));
  for (const char* name : {"drawing", "letter", "table"}) {
    QAction* kind = kinds->addAction(QString::fromLatin1(name));
    QObject::connect(kind, &QAction::triggered, &window, [&file, name] {
      QFile stream(file);
      if (stream.open(QIODevice::WriteOnly)) stream.write(name);
    });
  }
  kinds->actions().at(1)->setShortcut(QKeySequence(QStringLiteral("Ctrl+L")));
  window.resize(400, 300);
  window.show();
  return QApplication::exec();
}
