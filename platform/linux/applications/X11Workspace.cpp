#include "platform/linux/applications/X11Workspace.h"

#include <unistd.h>

#include <QDesktopServices>
#include <QString>
#include <QUrl>

#include "platform/MainLoop.h"
#include "platform/linux/system/PlatformFolders.h"

namespace pellar {

X11Workspace::X11Workspace(X11Applications& applications, X11Accessibility& accessibility, MainLoop& loop)
    : applications_(applications),
      accessibility_(accessibility),
      loop_(loop),
      installed_(std::make_shared<std::optional<DesktopEntries>>()),
      opener_(loop),
      viewer_(loop) {
  applications_.onFrontmostChanged = [this] { activated_.post(loop_); };
  applications_.onLaunched = [this](ProcessId pid) { launched_.post(loop_, pid); };
  applications_.onTerminated = [this](ProcessId pid) { terminated_.post(loop_, pid); };
  applications_.onDesktopChanged = [this] { desktopChanged_.post(loop_); };
}

X11Workspace::~X11Workspace() {
  applications_.onFrontmostChanged = nullptr;
  applications_.onLaunched = nullptr;
  applications_.onTerminated = nullptr;
  applications_.onDesktopChanged = nullptr;
}

std::optional<RunningApplication> X11Workspace::frontmostApplication() const {
  return applications_.frontmost();
}

void X11Workspace::activate(ProcessId pid) {
  const X11Application* application = applications_.withPid(pid);
  if (application == nullptr) return;
  // A window of it that was just raised becomes the active one; another must not come before it.
  if (applications_.isRaising(*application)) return;
  const auto front = applications_.frontmost();
  if (front && front->pid == application->pid) return;
  const xcb_window_t window = applications_.lastActiveWindow(*application);
  if (window != XCB_WINDOW_NONE) accessibility_.activateWindow(window);
}

// A window of this program that is shown later becomes active by itself.
void X11Workspace::activateIgnoringOtherApps() {
  const X11Application* own = applications_.withPid(getpid());
  if (own == nullptr) return;
  const xcb_window_t window = applications_.lastActiveWindow(*own);
  if (window != XCB_WINDOW_NONE) accessibility_.activateWindow(window);
}

void X11Workspace::open(const std::string& path) {
  opener_.open(path);
}

void X11Workspace::openUrl(const std::string& url) {
  QDesktopServices::openUrl(QUrl(QString::fromStdString(url), QUrl::StrictMode));
}

// Installed programs are looked up anew, for what is hidden is asked for seldom; but once for all the rows of
// a menu.
std::optional<std::string> X11Workspace::displayName(const std::string& bundleId) const {
  if (const auto* running = applications_.withBundleId(bundleId)) return running->name;
  if (!*installed_) {
    installed_->emplace(dataFolders());
    loop_.post([weak = std::weak_ptr(installed_)] {
      if (const auto installed = weak.lock()) installed->reset();
    });
  }
  const auto entry = (*installed_)->forWindowClass(bundleId);
  if (!entry || entry->name.empty()) return std::nullopt;
  return entry->name;
}

void X11Workspace::activateFileViewerSelecting(const std::string& path) {
  viewer_.select(path);
}

}  // namespace pellar
