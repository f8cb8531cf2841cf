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
  takeOver(shownPath(accessibility));
}

void OfficeWindow::takeOver(std::optional<std::string> shown) {
  if (path == shown) return;
  path = std::move(shown);
  pathInTitle_ = {};
  if (path) pathInTitle_.look(title, *path);
}

std::optional<std::string> OfficeWindow::askPath(Accessibility& accessibility) {
  if (!path) return std::nullopt;
  auto shown = shownPath(accessibility);
  if (shown) takeOver(shown);
  return shown;
}

bool OfficeWindow::titleNamesPath() {
  if (!path) return false;
  pathInTitle_.look(title, *path);
  return pathInTitle_.names();
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
