#include "app/tracking/OfficeWindow.h"

#include <utility>

#include "app/tracking/AX.h"
#include "core/FileUrl.h"
#include "core/TabLabel.h"

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
  const auto document = AX::value<std::string>(accessibility, element, "AXDocument");
  auto read = document ? pathOfFileUrl(*document) : std::nullopt;
  if (path == read) return;
  path = std::move(read);
  titleNamesPath_ = titleNamedPath_ = path && TabLabel::titleNames(title, *path);
  titleOfPath_ = title;
}

bool OfficeWindow::mustReadPath() {
  if (!path) return true;
  if (titleOfPath_ != title) {
    titleOfPath_ = title;
    titleNamesPath_ = TabLabel::titleNames(title, *path);
    titleNamedPath_ = titleNamedPath_ || titleNamesPath_;
  }
  return titleNamedPath_ && !titleNamesPath_;
}

}  // namespace pellar
