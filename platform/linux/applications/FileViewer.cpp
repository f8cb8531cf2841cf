#include "platform/linux/applications/FileViewer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QUrl>
#include <chrono>
#include <filesystem>

#include "core/FileUrl.h"
#include "core/Log.h"
#include "platform/MainLoop.h"
#include "platform/linux/system/SessionBus.h"

namespace pellar {
namespace {

using namespace std::chrono_literals;

bool showItem(const std::string& path) {
  const auto address = SessionBus::answering(1s);
  if (!address) return false;
  const QString name = QStringLiteral("pellar-file-manager");
  bool shown = false;
  {
    const QDBusConnection bus = QDBusConnection::connectToBus(*address, name);
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromStdString(fileUrlOf(path))} << QString();
    shown = bus.isConnected() &&
            bus.call(call, QDBus::Block, SessionBus::answerMilliseconds).type() == QDBusMessage::ReplyMessage;
  }
  QDBusConnection::disconnectFromBus(name);
  return shown;
}

void openFolder(const std::string& path) {
  const auto folder = std::filesystem::path(path).parent_path().string();
  if (!QDesktopServices::openUrl(QUrl::fromEncoded(QByteArray::fromStdString(fileUrlOf(folder)))))
    Log::write("cannot open " + folder + ": nothing here opens folders");
}

}  // namespace

void FileViewer::select(const std::string& path) {
  thread_.post([path, loop = &loop_, alive = alive_.watch()] {
    const bool shown = showItem(path);
    if (shown || !alive) return;
    loop->post([path, alive] {
      if (alive) openFolder(path);
    });
  });
}

}  // namespace pellar
