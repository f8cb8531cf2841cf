#include <QApplication>
#include <QThreadPool>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "app/shell/AppDelegate.h"
#include "core/FileSizeLimit.h"
#include "core/Log.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/desktop/SingleInstance.h"
#include "platform/linux/system/PlatformFolders.h"
#include "platform/linux/system/QtProgram.h"
#include "platform/linux/system/TemporaryVariable.h"
#include "platform/linux/system/TerminationSignals.h"
#include "platform/linux/system/ToolkitScale.h"
#include "platform/linux/x11/LostServer.h"
#include "platform/shared/system/FolderLock.h"

namespace {

using pellar::AppDelegate;
using pellar::LinuxPlatform;
using pellar::SingleInstance;
using pellar::TemporaryVariable;
using pellar::ToolkitScale;
using pellar::X11Connection;
using pellar::X11Density;
using pellar::X11Failure;
namespace LostServer = pellar::LostServer;

void say(const std::string& sentence) {
  std::fprintf(stderr, "%s\n", sentence.c_str());
}

void handleToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (message.contains(QLatin1String("X11 connection broke"))) LostServer::endProcess();
  if (type >= QtCriticalMsg) say(message.toStdString());
}

// The toolkit's application object, without what a strip of tabs has no use for. The settings are the
// toolkit's own, not the user's, and programs started later must not inherit them.
std::unique_ptr<QApplication> makeApplication(const X11Connection& connection) {
  // From the command line it would take options of its own, another display and a style among them. It refers
  // to what it is given as long as it lives.
  static std::array<char, 7> name{"pellar"};
  static std::array<char*, 2> arguments{name.data(), nullptr};
  static int count = 1;
  const TemporaryVariable platform("QT_QPA_PLATFORM", "xcb");
  // No OpenGL, and no shared-memory images that are waited for.
  const TemporaryVariable openGL("QT_XCB_GL_INTEGRATION", "none");
  const TemporaryVariable sharedMemory("QT_XCB_NO_MITSHM", "1");
  const ToolkitScale scale(X11Density::monitorsOf(connection));
  const TemporaryVariable loop("QT_NO_GLIB", "1");
  // A desktop's own theme brings its whole toolkit along.
  const TemporaryVariable theme("QT_QPA_PLATFORMTHEME", "generic");
  const TemporaryVariable desktop("XDG_CURRENT_DESKTOP", "X-Generic");
  const TemporaryVariable style("QT_STYLE_OVERRIDE", std::nullopt);
  // The session's manager would start it again at the next login, whatever the menu says about that.
  const TemporaryVariable session("SESSION_MANAGER", std::nullopt);
  QApplication::setDesktopSettingsAware(false);
  QApplication::setQuitOnLastWindowClosed(false);
  auto application = std::make_unique<QApplication>(count, arguments.data());
  QApplication::setApplicationName(QStringLiteral("pellar"));
  // The painter's threads would each wake up once more, to end, half a minute after they had something to do.
  QThreadPool::globalInstance()->setExpiryTimeout(-1);
  return application;
}

// Until the program is told to end; gives its exit code.
int run(LinuxPlatform& platform, SingleInstance& instance) {
  // Two copies would take turns in overwriting one another's state.
  const pellar::FolderLock state(platform.platform().folders.applicationSupport / "Pellar");
  if (state.isAnothers()) {
    say("Pellar is already running on another display and keeps its settings there.");
    return 1;
  }
  AppDelegate delegate(platform.platform());
  instance.onAsked = [&delegate] { delegate.showItself(); };
  platform.platform().mainLoop.post([&delegate] { delegate.applicationDidFinishLaunching(); });
  // QApplication's own also speaks up for screen readers, which AtSpiBridge alone decides.
  const int code = QCoreApplication::exec();
  instance.onAsked = nullptr;
  return code;
}

}  // namespace

int main() {
  pellar::FileSizeLimit::makeAnError();
  auto opened = X11Connection::open();
  if (const auto* failure = std::get_if<X11Failure>(&opened)) {
    say(failure->sentence);
    return 1;
  }
  auto connection = std::move(std::get<std::unique_ptr<X11Connection>>(opened));

  qInstallMessageHandler(&handleToolkitMessage);
  LostServer::watchXlib();
  const auto application = makeApplication(*connection);
  const auto [instance, otherAnswered] = SingleInstance::claim();
  if (!instance) {
    say(otherAnswered ? "Pellar is already running; its menu is open."
                      : "Pellar is already running, but it does not answer.");
    return otherAnswered ? 0 : 1;
  }
  const pellar::TerminationSignals termination([] { pellar::QtProgram().terminate(); });

  // What the platform finds out as it is made is kept, too.
  pellar::Log::setUrl(pellar::platformFolders().logFile);
  int code = 0;
  bool lookingUpNames = false;
  {
    LinuxPlatform platform(std::move(connection), [] { LostServer::endProcess(); });
    code = run(platform, *instance);
    lookingUpNames = platform.mayBeLookingUpNames();
  }
  // The toolkit's end would wait for a resolver that does not answer; nothing of ours is left to be ended.
  if (lookingUpNames) std::_Exit(code);
  return code;
}
