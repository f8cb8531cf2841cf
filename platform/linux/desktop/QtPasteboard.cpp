#include "platform/linux/desktop/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QString>

namespace pellar {

void QtPasteboard::setString(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

}  // namespace pellar
