#pragma once

#include <QAccessible>
#include <memory>

#include "core/Alive.h"
#include "platform/MainLoop.h"

namespace pellar {

// Stands before the toolkit on the accessibility bus, where any program may call: the toolkit takes for
// granted that a call carries as many values as it should, and would end over one that does not.
class AtSpiGuard final : public QAccessible::ActivationObserver {
 public:
  explicit AtSpiGuard(MainLoop& loop);
  ~AtSpiGuard() override;
  AtSpiGuard(const AtSpiGuard&) = delete;
  AtSpiGuard& operator=(const AtSpiGuard&) = delete;

  void accessibilityActiveChanged(bool active) override;

 private:
  class Door;
  void stepInFront();

  MainLoop& loop_;
  std::unique_ptr<Door> door_;
  Alive alive_;
};

}  // namespace pellar
