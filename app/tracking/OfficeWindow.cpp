#include "app/tracking/OfficeWindow.h"

#include <utility>

#include "app/tracking/AX.h"
#include "core/FileUrl.h"

namespace pellar {

OfficeWindow::OfficeWindow(Accessibility& accessibility, Element windowElement, TrackedApp owner,
                           ProcessId ownerPid)
    : element(std::move(windowElement)), app(std::move(owner)), pid(ownerPid), id_(element.hash()) {
  readSnapshot(accessibility);
}

void OfficeWindow::refresh(Accessibility& accessibility) {
  readSnapshot(accessibility);
  readPath(accessibility);
}

void OfficeWindow::readSnapshot(Accessibility& accessibility) {
  if (auto read = AX::value<std::string>(accessibility, element, "AXTitle")) title = std::move(*read);
  if (const auto read = AX::frame(accessibility, element)) frame = *read;
  minimized = AX::value<bool>(accessibility, element, "AXMinimized").value_or(false);
  fullscreen = AX::value<bool>(accessibility, element, "AXFullScreen").value_or(false);
}

void OfficeWindow::readPath(Accessibility& accessibility) {
  if (app.office || !mustReadPath()) return;
  auto read = shownPath(accessibility);
  if (path == read) return;
  path = std::move(read);
  pathInTitle_ = {};
  if (path) pathInTitle_.look(title, *path);
}

bool OfficeWindow::stillShowsPath(Accessibility& accessibility) const {
  return path && shownPath(accessibility) == path;
}

std::optional<std::string> OfficeWindow::shownPath(Accessibility& accessibility) const {
  const auto document = AX::value<std::string>(accessibility, element, "AXDocument");
  return document ? pathOfFileUrl(*document) : std::nullopt;
}

bool OfficeWindow::mustReadPath() {
  if (!path) return true;
  pathInTitle_.look(title, *path);
  return pathInTitle_.isOutdated();
}

}  // namespace pellar
