#pragma once

#include <functional>
#include <vector>

#include "platform/Alerts.h"
#include "platform/linux/drawing/PixelRect.h"
#include "platform/linux/x11/X11Connection.h"

class QDialog;

namespace pellar {

// Modal questions as dialogs of the toolkit. A question gets the keyboard, and stands where no panel of the
// program covers it.
class QtAlerts final : public Alerts {
 public:
  // `panelFrames` says where the shown panels are, in pixels of the root.
  QtAlerts(X11Connection& connection, std::function<std::vector<PixelRect>()> panelFrames)
      : connection_(connection), panelFrames_(std::move(panelFrames)) {}

  [[nodiscard]] std::optional<TextAlertAnswer> runModal(const TextAlert& alert) override;

 private:
  void place(QDialog& dialog) const;
  void activate(const QDialog& dialog);

  X11Connection& connection_;
  std::function<std::vector<PixelRect>()> panelFrames_;
  bool open_ = false;
};

}  // namespace pellar
