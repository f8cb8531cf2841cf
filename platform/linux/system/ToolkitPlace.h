#pragma once

#include <QPoint>
#include <QRect>

#include "platform/linux/x11/PointMap.h"

// Where the toolkit has something of the X screen. Its units are pixels of a scale that it was told when it
// started; each of its screens begins where the monitor does.
namespace pellar::ToolkitPlace {

[[nodiscard]] QPoint of(RootPoint pixel);
[[nodiscard]] QRect of(const RootRect& pixels);

}  // namespace pellar::ToolkitPlace
